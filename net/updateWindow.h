// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "framework/framework.h"
#include "net/DownloadTarget.h"
#include "net/HTTPSocket.h"
#include "net/UpdateSite.h"

namespace marrowbeck {

/// A small modal window that asks a server which version of the program is current, offers a newer one, fetches it to
/// the Desktop (see DownloadTarget), and offers to open it. The check begins as soon as the window is whole, without a
/// time-out, and the window closes when it is over; nothing is said when the running version is the current one and the
/// check was automatic. One instance, Global<updateWindow>(); to be shown with ShowModal. Main thread.
///
/// The feed is a text that holds the word "standalone" and four values, each between a start and an end tag:
/// CurrentVersion, Description, Free, DownloadURLOSX. Every version but the running one counts as an update.
class updateWindow : public Window {
  public:
    explicit updateWindow(UpdateSite site = UpdateSite::Configured());

    /// True when the program began the check, not a person.
    bool automaticCheck = false;
    /// A short link to the file is being resolved: the page that comes is no feed.
    bool isDownloadingFile = false;

    void Layout() override;
    void CreateControls() override;

    Ref<Label> StaticText1;
    Ref<ProgressBar> ProgressBar1;
    Ref<HTTPSocket> hp;
    Ref<PushButton> PushButton1;

    void Event_Open() override;
    /// Whatever closes the window ends the check as well, so that nothing comes of it later.
    void Event_Close() override;

    /// What stands in `content` between the first start tag of that name and the next end tag; both are expected.
    /// Without an end tag the text is empty; without a start tag it begins as far into the content as that is long.
    static String returnValue(const String& content, const String& tag);
    /// The target that the page of a short link names.
    static String extractURL(const String& page);

  private:
    void hp_PageReceived(HTTPSocket& sender, const String& url, int httpStatus, const Ref<InternetHeaders>& headers,
                         const String& content);
    void hp_Error(HTTPSocket& sender, int code);
    void hp_ReceiveProgress(HTTPSocket& sender, int bytesReceived, int totalBytes, const String& newData);
    void hp_DownloadComplete(HTTPSocket& sender, const String& url, int httpStatus, const Ref<InternetHeaders>& headers,
                             const Ref<FolderItem>& file);
    void PushButton1_Action(PushButton& sender);

    /// Asks for the page of a short link that another one led to, after a pause that is longer each time: they may lead
    /// to each other for ever.
    void follow(const String& url);
    bool isCurrent(const String& version) const;
    void fail(const String& message);

    static String startTag(const String& name);
    static String endTag(const String& name);
    void askUpgrade(const String& version, const String& description, const String& url, bool isFree);
    void download(const String& url);
    static String getFilename(const String& url);

    UpdateSite site_;
    /// What comes goes into its file, and may be of any size. Null for a page, which is kept in memory.
    std::unique_ptr<DownloadTarget> target_;
    /// Whether the answer's body is shorter than its head said.
    bool isCutShort_ = false;
    /// Waits to ask for the next short link.
    Ref<Timer> pause_;
    String nextLink_;
};

}  // namespace marrowbeck
