#include "net/UpdateSite.h"

namespace marrowbeck {

String UpdateSite::FeedUrl() const {
    return "http://" + Host + "/photography/marrowbeck/updates/marrowbeck.xml";
}

String UpdateSite::ProductUrl() const {
    return "http://" + Host + "/photography/marrowbeck/marrowbeck.html";
}

bool UpdateSite::IsShortLink(const String& url) const {
    return !ShortLinkHost.IsEmpty() && InStr(url, ShortLinkHost + "/") > 0;
}

}  // namespace marrowbeck
