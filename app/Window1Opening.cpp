#include "app/App.h"
#include "app/VersionLine.h"
#include "app/Window1.h"

namespace marrowbeck {

void Window1::Event_Open() {
    SegmentedControl1->Items(kAllItem)->Selected(true);
    EXIFTextArea->Text("");
    DataLabel->Text("");
    filterlabel->Text("Filter");
    TotalLabel->Text("");
    ShowColumns();
    AcceptFileDrop("special/any");
    VersionText->Text(VersionLine());
    totalnumber->Text("");
}

// The program is its window.
void Window1::Event_Close() {
    Quit(0);
}

}  // namespace marrowbeck
