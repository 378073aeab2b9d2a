#pragma once

#include "app/SearchThreads.h"
#include "app/Toolbar1.h"
#include "framework/framework.h"

namespace marrowbeck {

/// The main window: its controls, its state, and the handlers through which everything happens. It is declared here
/// once; layout, opening and closing stand beside this file, the handlers in catalogue/. One instance,
/// Global<Window1>(), which lives to the end of the process. Main thread, and the two threads of the window at their
/// turns.
class Window1 : public Window {
  public:
    /// What is said of a file where a folder is wanted.
    static constexpr const char* kNotAFolder = "Please drop a folder of photos, not individual files onto Marrowbeck";

    /// Items of the filter.
    enum FilterItem : int { kJpgItem = 0, kTiffItem = 1, kPngItem = 2, kAllItem = 3 };

    void Layout() override;
    void CreateControls() override;

    void Event_Open() override;
    void Event_Close() override;

    // The controls, in the order of their making.
    Ref<Listbox> Listbox1;
    Ref<Label> VersionText;
    Ref<PushButton> ChooseBtn;
    Ref<Label> totalnumber;
    Ref<Label> StaticText2;
    Ref<Toolbar1> MyToolbar;
    Ref<SegmentedControl> SegmentedControl1;
    Ref<ProgressWheel> ProgressWheel1;
    Ref<Label> filterlabel;
    Ref<TextArea> EXIFTextArea;
    Ref<Label> Label1;
    Ref<TextArea> DataLabel;
    Ref<Label> Label2;
    Ref<GroupBox> GroupBox1;
    Ref<Canvas> Canvas1;
    Ref<CheckBox> Subfoldercheckbox;
    Ref<Label> TotalLabel;
    Ref<CheckBox> UpdateCheckbox;
    Ref<SizeThread> SizeThread1;
    Ref<PicturescaleThread> PicturescaleThread1;
    Ref<Timer> PreviewTimer;
    Ref<Timer> selectRowTimer;

    /// A folder that was dropped, or opened through the desktop, and waits for the next search; Nil when none waits.
    Ref<FolderItem> gDropFolderpath;
    /// Copies of the filter, taken at the start of each search.
    bool gJPG = false;
    bool gTIFF = false;
    bool gPNG = false;
    /// The folder being searched, or last searched.
    Ref<FolderItem> gD;
    bool gANY = false;

    /// Empties the count and the thumbnail cache and starts the search thread, which must not be running.
    void StartSearch();

    // Folder search.
    void SizeThread1_Run(SizeThread& sender);

    // Metadata queries. `path` is a file's ShellPath, already escaped. After a failure, which is told in a message, the
    // result is empty.
    String GetAll(const String& path);
    String GetEXIF(const String& path);

    /// Adds the row of one image, whole on return. Nil is passed over.
    void checksize(const Ref<FolderItem>& item);

  private:
    void _CreateControls0();

    void ShowColumns();
    void WalkFolder();
    void SearchIndex();
    void ShowFilterState(bool filtered);
    void ShowSearchState(const String& text);
};

}  // namespace marrowbeck
