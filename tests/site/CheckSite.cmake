# Checks the pages in TREE: the feed says what the program of VERSION cuts out of it, the manual is one, and every link of
# the product page leads to a page.
file(READ ${TREE}/updates/marrowbeck.xml feed)
set(archive marrowbeck-${VERSION}.tar.gz)
foreach(part "standalone" "<CurrentVersion>${VERSION}</CurrentVersion>" "<Free>Yes</Free>"
             "/photography/marrowbeck/${archive}</DownloadURLOSX>")
  string(FIND "${feed}" "${part}" place)
  if(place EQUAL -1)
    message(SEND_ERROR "The feed does not hold ${part}")
  endif()
endforeach()
foreach(tag Description DownloadURLOSX)
  if(NOT feed MATCHES "<${tag}>[^<>]+</${tag}>")
    message(SEND_ERROR "The feed has no ${tag}")
  endif()
endforeach()

# A manual whose picture was not found comes out empty.
file(READ ${TREE}/help.pdf start LIMIT 4)
file(SIZE ${TREE}/help.pdf size)
if(NOT start MATCHES "^%PDF" OR size LESS 100000)
  message(SEND_ERROR "help.pdf is no manual")
endif()

file(READ ${TREE}/marrowbeck.html page)
string(REGEX MATCHALL "(href|src)=\"[^\"]+\"" links "${page}")
if(NOT links)
  message(SEND_ERROR "The product page has no links")
endif()
foreach(link IN LISTS links)
  string(REGEX REPLACE "^[a-z]+=\"(.*)\"$" "\\1" target "${link}")
  # The archive is made when it is asked for.
  if(NOT target STREQUAL archive AND NOT EXISTS ${TREE}/${target})
    message(SEND_ERROR "The product page leads to ${target}, which is not there")
  endif()
endforeach()
