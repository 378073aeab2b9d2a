# SPDX-License-Identifier: GPL-2.0-or-later
# The places on the web that the program knows.
set(MARROWBECK_SITE_HOST
    ""
    CACHE STRING "Host, with its port if it has one, of the update feed and the product page; empty for no site")
set(MARROWBECK_CONTACT
    "marrowbeck@kv2tqq.com"
    CACHE STRING "Address to which people write about the program; also the maintainer's of the package")
set(MARROWBECK_SHORT_LINK_HOST
    ""
    CACHE STRING "Host of the short links that the update feed may hold; empty for none")

# Where the pages of the site are; empty without one.
set(site_pages)
if(MARROWBECK_SITE_HOST)
  set(site_pages "http://${MARROWBECK_SITE_HOST}/photography/marrowbeck")
endif()
