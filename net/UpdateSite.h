// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The program's site, and its short links. The URLs of its pages are made here alone.
struct UpdateSite {
    /// Host, with its port if it has one, of the feed and the product page; empty where the program has no site.
    String Host;
    /// Host of the short links that may stand in for URLs of downloads; empty for none.
    String ShortLinkHost;

    /// The hosts that the program was built for.
    static UpdateSite Configured();

    /// What the update check reads.
    String FeedUrl() const;
    /// What a person is shown.
    String ProductUrl() const;
    /// Whether the URL holds the name of the short-link host as a host stands in it.
    bool IsShortLink(const String& url) const;
};

}  // namespace marrowbeck
