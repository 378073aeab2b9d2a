# SPDX-License-Identifier: GPL-2.0-or-later
# Read by CPack for each kind of package that it makes.
# The time that it gives to all files.
set(ENV{SOURCE_DATE_EPOCH} ${CPACK_RELEASE_TIME})
if(CPACK_GENERATOR STREQUAL "DEB")
  # So that the entries of the desktop know /usr as their prefix and not the folder in which the package is put together.
  set(CPACK_SET_DESTDIR ON)
  set(CPACK_INSTALL_PREFIX /usr)
  # Not among the pages of the site.
  unset(CPACK_OUTPUT_FILE_PREFIX)
  unset(CPACK_POST_BUILD_SCRIPTS)
  set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/PackagePermissions.cmake)
endif()
