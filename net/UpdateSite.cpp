// SPDX-License-Identifier: GPL-2.0-or-later
#include "net/UpdateSite.h"

namespace marrowbeck {

namespace {

String urlOf(const String& host, const String& path) {
    return "http://" + host + "/photography/marrowbeck/" + path;
}

}  // namespace

String UpdateSite::FeedUrl() const {
    return urlOf(Host, "updates/marrowbeck.xml");
}

String UpdateSite::ProductUrl() const {
    return urlOf(Host, "marrowbeck.html");
}

bool UpdateSite::IsShortLink(const String& url) const {
    return !ShortLinkHost.IsEmpty() && InStr(url, ShortLinkHost + "/") > 0;
}

}  // namespace marrowbeck
