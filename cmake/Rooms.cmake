# SPDX-License-Identifier: GPL-2.0-or-later
# A room of a hall: all files of the folder belong to the hall's library. Which rooms a room may use is the order in which
# the hall adds them; .ci/rooms checks it.
function(marrowbeck_room library)
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  target_sources(${library} PRIVATE ${sources})
endfunction()
