# The places on the web that the program knows.
set(MARROWBECK_SITE_HOST
    "www.marrowbeck.example"
    CACHE STRING "Host, with its port if it has one, of the update feed and the product page")
set(MARROWBECK_SHORT_LINK_HOST
    "go.marrowbeck.example"
    CACHE STRING "Host of the short links that the update feed may hold; empty for none")
