// SPDX-License-Identifier: GPL-2.0-or-later
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

    /// How long a selection rests before its preview is made, and how soon after a row the first one gets selected, in
    /// milliseconds.
    static constexpr int kPreviewDelay = 100;

    /// Items of the filter.
    enum FilterItem : int { kJpgItem = 0, kTiffItem = 1, kPngItem = 2, kAllItem = 3 };

    void Layout() override;
    void CreateControls() override;

    void Event_DropObject(const Ref<DragItem>& obj, int action) override;
    void Event_Open() override;
    void Event_Close() override;
    bool Event_DragEnter(const Ref<DragItem>& obj, int action) override;
    void Event_MouseExit() override;

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
    /// The picture on show in the preview, a copy of the thumbnail. Nil says that there is no preview.
    Ref<Picture> pic;
    /// Copies of the filter, taken at the start of each search.
    bool gJPG = false;
    bool gTIFF = false;
    bool gPNG = false;
    /// The folder being searched, or last searched.
    Ref<FolderItem> gD;
    bool gANY = false;

    void UpdateCheckbox_Action(CheckBox& sender);

    // Result list.
    bool Listbox1_CellBackgroundPaint(Graphics& g, int row, int column);
    bool Listbox1_CompareRows(int row1, int row2, int column, int& result);
    void Listbox1_Change();
    bool Listbox1_ContextualMenuAction(const Ref<MenuItem>& hitItem);
    bool Listbox1_ConstructContextualMenu(const Ref<MenuItem>& base, int x, int y);
    void Listbox1_DoubleClick();
    bool Listbox1_SortColumn(int column);
    bool Listbox1_MouseDown(int x, int y);

    // Commands.
    void ChooseBtn_Action(PushButton& sender);
    void MyToolbar_Action(Toolbar& sender, const Ref<ToolItem>& item);
    void SegmentedControl1_Action(SegmentedControl& sender, int itemIndex);
    /// Unless a search runs: empties the count and the thumbnail cache and starts the search thread.
    void StartSearch();

    // Folder search.
    void SizeThread1_Run(SizeThread& sender);

    // Thumbnails.
    void PicturescaleThread1_Run(PicturescaleThread& sender);
    void Canvas1_Paint(Graphics& g);
    void Canvas1_DoubleClick(int x, int y);
    /// Makes the preview of the selected row on the preview's thread. Does nothing while that runs.
    void ShowThumbnail();
    /// The thumbnail of `file`, which is `width` by `height` pixels large, from the cache or newly made; Nil when none
    /// can be had. On the preview's thread.
    Ref<Picture> CreateThumbnail(const Ref<FolderItem>& file, int width, int height);

    // Selection.
    void PreviewTimer_Action(Timer& sender);
    void selectRowTimer_Action(Timer& sender);
    /// Shows the selected file in the file manager, and opens it in the user's viewer. Both act on the selected row,
    /// whatever the text says, and do nothing when its file has gone.
    void ShowFile(const String& path);
    void OpenPhoto(const String& path);

    // Metadata queries. `path` is a file's ShellPath, already escaped. After a failure, which is told in a message, the
    // result is empty.
    String GetAll(const String& path);
    String GetEXIF(const String& path);

    /// Adds the row of one image, whole on return. Nil is passed over.
    void checksize(const Ref<FolderItem>& item);

  protected:
    /// A heading was clicked, and no change of selection or press in the rows came since.
    bool sortclicked = false;

  private:
    void _CreateControls0();
    void bindEvents();
    void pressTool(const Ref<ToolButton>& tool);

    /// Whether the columns have shared their room by the rows of this search; its end does it once more.
    bool columnsShared = false;
    /// A search is about to start, and a folder is being chosen.
    bool isStarting = false;
    bool isChoosing = false;

    void ShowColumns();
    void RestoreState();
    void WalkFolder();
    void SearchIndex();
    void ShowFilterState(bool filtered);
    void ShowSearchState(const String& text);
    /// Where the dialog opens when no folder was ever searched.
    enum class Fallback { Pictures, Desktops };
    void ChooseFolder(Fallback fallback);
    void choose(Fallback fallback);
    void ShowSelectedRow();
    Ref<FolderItem> SelectedFile() const;
};

}  // namespace marrowbeck
