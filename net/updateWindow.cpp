// SPDX-License-Identifier: GPL-2.0-or-later
#include "net/updateWindow.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/Utf8.h"

namespace marrowbeck {
namespace {

/// In bytes. A feed or the page of a short link is a hundred times smaller; what is larger is neither, and looking for
/// the values in it would hold up the window.
constexpr int kLargestPage = 256 * 1024;

/// The first and the longest pause between two short links, in milliseconds: a chain of some links is followed in a
/// moment, and one without an end is no burden to anybody.
constexpr int kFirstPause = 125;
constexpr int kLongestPause = 60'000;

constexpr const char* kContentProblem = "There was a problem with the website content. Please try again later.";

/// A text of the site for people. It says nothing of its encoding: what is no UTF-8 is most likely Windows-1252.
String readable(const String& text) {
    const TextEncoding encoding = base::isUtf8(text.Bytes()) ? Encodings::UTF8 : Encodings::WindowsLatin1;
    return ConvertEncoding(DefineEncoding(text, encoding), Encodings::UTF8);
}

}  // namespace

updateWindow::updateWindow(UpdateSite site) : site_(std::move(site)) {}

void updateWindow::Layout() {
    Title("Update");
    Width(300);
    Height(120);
    MinWidth(64);
    MinHeight(64);
    MaxWidth(32000);
    MaxHeight(32000);
    Frame(FrameMovableModal);
    CloseButton(true);
    Resizeable(true);
    MaximizeButton(true);
    MinimizeButton(true);
}

void updateWindow::CreateControls() {
    StaticText1 = Add<Label>("StaticText1", 20, 19, 266, 20);
    StaticText1->Text("Checking for updates...");
    StaticText1->TextFont("System");
    StaticText1->Multiline(false);

    ProgressBar1 = Add<ProgressBar>("ProgressBar1", 20, 46, 260, 12);
    ProgressBar1->Maximum(100);
    ProgressBar1->Value(0);
    ProgressBar1->AccessibleName("Progress");

    hp = New<HTTPSocket>();
    hp->Yield = false;
    hp->OnPageReceived = [this](HTTPSocket& sender, const String& url, int httpStatus,
                                const Ref<InternetHeaders>& headers,
                                const String& content) { hp_PageReceived(sender, url, httpStatus, headers, content); };
    hp->OnError = [this](HTTPSocket& sender, int code) { hp_Error(sender, code); };
    hp->OnReceiveProgress = [this](HTTPSocket& sender, int bytesReceived, int totalBytes, const String& newData) {
        hp_ReceiveProgress(sender, bytesReceived, totalBytes, newData);
    };
    hp->OnDownloadComplete = [this](HTTPSocket& sender, const String& url, int httpStatus,
                                    const Ref<InternetHeaders>& headers, const Ref<FolderItem>& file) {
        hp_DownloadComplete(sender, url, httpStatus, headers, file);
    };

    pause_ = New<Timer>();
    pause_->Period(kFirstPause);
    pause_->OnAction = [this](Timer& sender) {
        sender.Period(std::min(2 * sender.Period(), kLongestPause));
        hp->Get(nextLink_);
    };

    PushButton1 = Add<PushButton>("PushButton1", 208, 80, 72, 20);
    PushButton1->Caption("Cancel");
    PushButton1->Cancel(true);
    PushButton1->Default(true);
    PushButton1->OnAction = [this](PushButton& sender) { PushButton1_Action(sender); };
}

void updateWindow::Event_Open() {
    ProgressBar1->Maximum(0);
    hp->Get(site_.FeedUrl());
}

void updateWindow::Event_Close() {
    pause_->Mode(Timer::ModeOff);
    hp->Close();
    target_ = nullptr;
}

// Neither the status nor the headers are looked at: a page that is no feed says so by itself.
void updateWindow::hp_PageReceived(HTTPSocket& sender, const String& url, int, const Ref<InternetHeaders>&,
                                   const String& content) {
    const Ref<updateWindow> keep(this);
    if (site_.IsShortLink(url)) {
        const String target = extractURL(content);
        if (site_.IsShortLink(target)) {
            follow(target);
        } else if (isDownloadingFile) {
            download(target);
        } else {
            sender.Get(target);
        }
        return;
    }
    if (InStr(content, "standalone") == 0) {
        fail(kContentProblem);
        return;
    }
    const String version = returnValue(content, "CurrentVersion");
    const String description = returnValue(content, "Description");
    const bool isFree = returnValue(content, "Free") == "Yes";
    const String downloadUrl = returnValue(content, "DownloadURLOSX");
    ProgressBar1->Visible(false);
    if (!isCurrent(version)) {
        askUpgrade(version, description, downloadUrl, isFree);
        return;
    }
    StaticText1->Text("This version is current.");
    StaticText1->Refresh();
    if (!automaticCheck) MsgBox("You are using the current version. No update is available.");
    Close();
}

/// Whether the version is the running one, field by field. A lower one is as different as a higher one.
bool updateWindow::isCurrent(const String& version) const {
    const Ref<Application> app = Application::Current();
    return Val(NthField(version, ".", 1)) == app->MajorVersion() &&
           Val(NthField(version, ".", 2)) == app->MinorVersion() && Val(NthField(version, ".", 3)) == app->BugVersion();
}

void updateWindow::fail(const String& message) {
    Beep();
    MsgBox(message);
    Close();
}

void updateWindow::hp_Error(HTTPSocket& sender, int code) {
    const Ref<updateWindow> keep(this);
    // An earlier file is back in its place before a person reads of the failure.
    const String path = target_ && target_->File() ? target_->File()->AbsolutePath() : String();
    target_ = nullptr;
    if (code == HTTPSocket::DownloadLost) {
        fail("The file '" + path + "' could not be written. Please check the disk and try again " + "later. (" +
             sender.LossReason() + ")");
        return;
    }
    fail("There was a communication error with the website. Please try again later. (Code: " + Str(code) + ")");
}

void updateWindow::hp_ReceiveProgress(HTTPSocket& sender, int bytesReceived, int totalBytes, const String&) {
    if (!target_ && bytesReceived > kLargestPage) {
        const Ref<updateWindow> keep(this);
        sender.Close();
        fail(kContentProblem);
        return;
    }
    const int kb = bytesReceived / 1024;
    isCutShort_ = bytesReceived < totalBytes;
    StaticText1->Text("Downloading: " + Format(kb, "###,###") + "KB downloaded...");
    ProgressBar1->Visible(true);
    if (totalBytes > 0) ProgressBar1->Maximum(totalBytes / 1024);
    ProgressBar1->Value(kb);
}

void updateWindow::hp_DownloadComplete(HTTPSocket&, const String&, int, const Ref<InternetHeaders>& headers,
                                       const Ref<FolderItem>&) {
    const Ref<updateWindow> keep(this);
    target_->Complete(headers && !isCutShort_);
    const Ref<FolderItem> file = target_->File();
    const Ref<MessageDialog> question = New<MessageDialog>();
    question->Title("Download Complete!");
    question->Message("The file '" + readable(target_->Name()) + "' is " + target_->Place() +
                      ". Would you like to open it now?");
    question->ActionButton()->Caption("Yes");
    question->CancelButton()->Caption("No");
    question->CancelButton()->Visible(true);
    if (question->ShowModal() == question->ActionButton()) file->Launch(true);
    Close();
}

void updateWindow::PushButton1_Action(PushButton&) {
    hp->Close();
    Close();
}

String updateWindow::startTag(const String& name) {
    return "<" + name + ">";
}

String updateWindow::endTag(const String& name) {
    return "</" + name + ">";
}

void updateWindow::askUpgrade(const String& version, const String& description, const String& url, bool isFree) {
    const Ref<MessageDialog> offer = New<MessageDialog>();
    offer->Title("New version available!");
    offer->Message("Version " + readable(version) + " is now available. (You are using version " +
                   Application::Current()->ShortVersion() + ".) " +
                   (isFree ? "This is a free upgrade. Would you like to automatically download this update?"
                           : "This is a paid upgrade. Would you like to automatically download the trial version?"));
    offer->Explanation(readable(description));
    offer->ActionButton()->Caption("Download");
    offer->CancelButton()->Visible(true);
    offer->AlternateActionButton()->Caption("Go to Website");
    offer->AlternateActionButton()->Visible(true);
    offer->Icon(MessageDialog::IconQuestion);
    const Ref<MessageDialogButton> answer = offer->ShowModal();
    if (answer == offer->CancelButton()) {
        Close();
    } else if (answer == offer->ActionButton()) {
        download(url);
    } else {
        // The window stays, for the person to close.
        ShowURL(site_.ProductUrl());
    }
}

String updateWindow::returnValue(const String& content, const String& tag) {
    const int start = InStr(content, startTag(tag)) + Len(startTag(tag));
    const int end = InStr(start, content, endTag(tag));
    return Mid(content, start, end - start);
}

void updateWindow::download(const String& url) {
    if (site_.IsShortLink(url)) {
        isDownloadingFile = true;
        hp->Get(url);
    } else {
        isCutShort_ = false;
        target_ = std::make_unique<DownloadTarget>(getFilename(url));
        if (target_->File()) {
            hp->Get(url, target_->File());
        } else {
            hp_Error(*hp, HTTPSocket::DownloadUnusable);
        }
    }
}

void updateWindow::follow(const String& url) {
    nextLink_ = url;
    pause_->Mode(Timer::ModeSingle);
}

String updateWindow::getFilename(const String& url) {
    return NthField(url, "/", CountFields(url, "/"));
}

/// What stands between the quotes behind the first "href=".
String updateWindow::extractURL(const String& page) {
    const int attribute = InStr(page, "href=");
    const int start = attribute + 6;
    const int end = InStr(attribute + 7, page, Chr(34));
    return Mid(page, start, end - start);
}

}  // namespace marrowbeck
