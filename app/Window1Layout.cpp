// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/Colors.h"
#include "app/Pictures.h"
#include "app/Window1.h"

namespace marrowbeck {
namespace {

constexpr Locks kLeftTop{true, true, false, false};
constexpr Locks kLeftBottom{true, false, false, true};
constexpr Locks kRightTop{false, true, true, false};
constexpr Locks kRightBottom{false, false, true, true};
constexpr Locks kLeftTopRight{true, true, true, false};
constexpr Locks kAll{true, true, true, true};

constexpr int kPanelTextSize = 12;
constexpr int kSeveralRows = 1;

/// What the two text areas beside the preview have in common.
void asPanel(const Ref<TextArea>& area) {
    area->Multiline(true);
    area->Styled(true);
    area->ReadOnly(true);
    area->Border(false);
    area->ScrollbarVertical(false);
    area->ScrollbarHorizontal(false);
    area->UseFocusRing(true);
    area->HideSelection(true);
    area->TextColor(Colors::kBlack);
    area->BackColor(Colors::kPanel);
    area->TextSize(kPanelTextSize);
    area->TextUnit(2);
    area->Alignment(TextControl::AlignLeft);
    area->LimitText(0);
    area->AcceptTabs(false);
    area->AutomaticallyCheckSpelling(false);
}

Ref<Timer> makeTimer() {
    const Ref<Timer> timer = New<Timer>();
    timer->Mode(Timer::ModeOff);
    timer->Period(1000);
    return timer;
}

template <class T>
Ref<T> makeThread() {
    const Ref<T> thread = New<T>();
    thread->Priority(1);
    thread->StackSize(0);
    return thread;
}

}  // namespace

void Window1::Layout() {
    Width(806);
    Height(492);
    MinWidth(640);
    MinHeight(400);
    MaxWidth(32000);
    MaxHeight(32000);
    Frame(FrameMetal);
    Composite(true);
    // The frame's own colour shows: HasBackColor stays False.
    Title("Marrowbeck");
    Placement(0);
    FullScreen(false);
    MenuBarVisible(true);
    CloseButton(true);
    Resizeable(true);
    LiveResize(true);
    MaximizeButton(true);
    MinimizeButton(true);
}

void Window1::CreateControls() {
    _CreateControls0();
}

void Window1::_CreateControls0() {
    const auto label = [this](const char* name, int left, int top, int width, int height, const Locks& locks, int tab,
                              const char* text, int align, Color color) {
        const Ref<Label> made = Add<Label>(name, left, top, width, height, locks);
        made->TabIndex(tab);
        made->TextAlign(align);
        made->TextColor(color);
        made->Text(text);
        return made;
    };

    Listbox1 = Add<Listbox>("Listbox1", 0, 280, 806, 170, kAll);
    Listbox1->TabIndex(1);
    Listbox1->ColumnCount(11);
    Listbox1->ColumnWidths("");
    Listbox1->HasHeading(true);
    Listbox1->HeadingIndex(0);
    Listbox1->SelectionType(kSeveralRows);
    Listbox1->GridLinesHorizontal(0);
    Listbox1->GridLinesVertical(2);
    Listbox1->DefaultRowHeight(-1);
    Listbox1->Border(true);
    Listbox1->UseFocusRing(true);
    Listbox1->ScrollbarHorizontal(false);
    Listbox1->ScrollBarVertical(true);
    Listbox1->AutoHideScrollbars(true);
    Listbox1->ColumnsResizable(true);
    Listbox1->Hierarchical(false);
    Listbox1->EnableDrag(false);
    Listbox1->EnableDragReorder(false);
    Listbox1->RequiresSelection(false);
    Listbox1->AccessibleName("Images");

    VersionText =
        label("VersionText", 229, 7, 349, 20, kLeftTopRight, 7, "Version", TextControl::AlignCenter, Colors::kGrey);

    ChooseBtn = Add<PushButton>("ChooseBtn", 673, 458, 113, 20, kRightBottom);
    ChooseBtn->TabIndex(8);
    ChooseBtn->Caption("Open Folder");
    ChooseBtn->HelpTag("Select a folder of images to check");
    ChooseBtn->Default(true);
    ChooseBtn->Cancel(false);
    ChooseBtn->ButtonStyle(0);

    totalnumber =
        label("totalnumber", 535, 7, 229, 20, kRightTop, 10, "Image Files", TextControl::AlignLeft, Colors::kWhite);
    // In a narrow window neither counter is written over the preview or over its neighbour on the left.
    totalnumber->LeastLeft(421);
    StaticText2 = label("StaticText2", 20, 452, 463, 20, kLeftBottom, 11,
                        "Drop a folder of images onto this window or use Open Folder button", TextControl::AlignLeft,
                        Colors::kWhite);

    MyToolbar = Add<Toolbar1>("MyToolbar", 0, 520, 600, 59);
    MyToolbar->AccessibleName("Tools");

    SegmentedControl1 = Add<SegmentedControl>("SegmentedControl1", 5, 39, 152, 24, kLeftTop);
    SegmentedControl1->TabIndex(12);
    SegmentedControl1->SelectionType(0);
    SegmentedControl1->MacControlStyle(0);
    for (const char* title : {"JPG", "TIFF", "PNG", "ALL"}) {
        const Ref<SegmentedControlItem> item = New<SegmentedControlItem>();
        item->Title(title);
        item->Width(30);
        SegmentedControl1->Append(item);
    }
    SegmentedControl1->SizeToFit();
    SegmentedControl1->AccessibleName("File types");

    ProgressWheel1 = Add<ProgressWheel>("ProgressWheel1", 776, 11, 16, 16, kRightTop);
    ProgressWheel1->TabIndex(13);
    ProgressWheel1->Visible(false);

    filterlabel =
        label("filterlabel", 32, 11, 100, 20, kLeftTop, 19, "Filter", TextControl::AlignCenter, Colors::kBlack);
    filterlabel->HelpTag("Choose file types to examine");

    EXIFTextArea = Add<TextArea>("EXIFTextArea", 8, 121, 149, 147, kLeftTop);
    EXIFTextArea->TabIndex(2);
    asPanel(EXIFTextArea);
    EXIFTextArea->AccessibleName("EXIF information");
    Label1 = label("Label1", 10, 96, 112, 20, kLeftTop, 21, "EXIF information", TextControl::AlignLeft, Colors::kBlack);

    DataLabel = Add<TextArea>("DataLabel", 421, 60, 365, 208, kLeftTopRight);
    DataLabel->TabIndex(3);
    asPanel(DataLabel);
    DataLabel->AccessibleName("File Information");
    Label2 =
        label("Label2", 423, 36, 100, 20, kLeftTop, 23, "File Information", TextControl::AlignLeft, Colors::kBlack);

    GroupBox1 = Add<GroupBox>("GroupBox1", 164, 7, 250, 264, kLeftTop);
    GroupBox1->TabIndex(24);
    GroupBox1->Caption("Preview");

    Canvas1 = Add<Canvas>("Canvas1", 169, 27, 240, 240, kLeftTop);
    Canvas1->TabIndex(0);
    Canvas1->HelpTag("Double Click to show photo in editor");
    Canvas1->Backdrop(Pictures::zn240());
    Canvas1->TabStop(false);
    Canvas1->UseFocusRing(false);
    Canvas1->AcceptFocus(false);
    Canvas1->AcceptTabs(false);
    Canvas1->DoubleBuffer(false);
    Canvas1->EraseBackground(true);
    Canvas1->AccessibleName("Preview");

    Subfoldercheckbox = Add<CheckBox>("Subfoldercheckbox", 31, 71, 100, 20, kLeftTop);
    Subfoldercheckbox->TabIndex(25);
    Subfoldercheckbox->Caption("Subfolders");
    Subfoldercheckbox->HelpTag("Include images within subfolders");
    Subfoldercheckbox->Value(true);

    TotalLabel = label("TotalLabel", 535, 36, 229, 20, kRightTop, 26, "Total", TextControl::AlignLeft, Colors::kWhite);
    // Beside the heading of the panel, with room for a number of six figures.
    TotalLabel->LeastLeft(530, 96);

    UpdateCheckbox = Add<CheckBox>("UpdateCheckbox", 20, 472, 257, 20, kLeftBottom);
    UpdateCheckbox->TabIndex(27);
    UpdateCheckbox->Caption("Check for Marrowbeck App Updates");
    UpdateCheckbox->HelpTag("Check for updates to Marrowbeck App at Start");
    UpdateCheckbox->Value(false);

    SizeThread1 = makeThread<SizeThread>();
    PicturescaleThread1 = makeThread<PicturescaleThread>();
    PreviewTimer = makeTimer();
    selectRowTimer = makeTimer();
    bindEvents();
}

void Window1::pressTool(const Ref<ToolButton>& tool) {
    if (tool->Enabled()) MyToolbar_Action(*MyToolbar, tool);
}

void Window1::bindEvents() {
    Listbox1->OnCellBackgroundPaint = [this](Graphics& g, int row, int column) {
        return Listbox1_CellBackgroundPaint(g, row, column);
    };
    Listbox1->OnCompareRows = [this](int row1, int row2, int column, int& result) {
        return Listbox1_CompareRows(row1, row2, column, result);
    };
    Listbox1->OnChange = [this] { Listbox1_Change(); };
    Listbox1->OnContextualMenuAction = [this](const Ref<MenuItem>& hitItem) {
        return Listbox1_ContextualMenuAction(hitItem);
    };
    Listbox1->OnConstructContextualMenu = [this](const Ref<MenuItem>& base, int x, int y) {
        return Listbox1_ConstructContextualMenu(base, x, y);
    };
    Listbox1->OnDoubleClick = [this] { Listbox1_DoubleClick(); };
    Listbox1->OnSortColumn = [this](int column) { return Listbox1_SortColumn(column); };
    Listbox1->OnMouseDown = [this](int x, int y) { return Listbox1_MouseDown(x, y); };
    ChooseBtn->OnAction = [this](PushButton& sender) { ChooseBtn_Action(sender); };
    MyToolbar->OnAction = [this](Toolbar& sender, const Ref<ToolItem>& item) { MyToolbar_Action(sender, item); };
    SegmentedControl1->OnAction = [this](SegmentedControl& sender, int itemIndex) {
        SegmentedControl1_Action(sender, itemIndex);
    };
    Canvas1->OnPaint = [this](Graphics& g) { Canvas1_Paint(g); };
    Canvas1->OnDoubleClick = [this](int x, int y) { Canvas1_DoubleClick(x, y); };
    UpdateCheckbox->OnAction = [this](CheckBox& sender) { UpdateCheckbox_Action(sender); };
    SizeThread1->OnRun = [this] { SizeThread1_Run(*SizeThread1); };
    PicturescaleThread1->OnRun = [this] { PicturescaleThread1_Run(*PicturescaleThread1); };
    PreviewTimer->OnAction = [this](Timer& sender) { PreviewTimer_Action(sender); };
    selectRowTimer->OnAction = [this](Timer& sender) { selectRowTimer_Action(sender); };
    // What these keys do in programs that show what is in a folder.
    AddShortcut("Cmd+O", [this] { ChooseBtn_Action(*ChooseBtn); });
    AddShortcut("F5", [this] { pressTool(MyToolbar->RefreshTB); });
    AddShortcut("Escape", [this] { pressTool(MyToolbar->StopTB); });
}

}  // namespace marrowbeck
