# SPDX-License-Identifier: GPL-2.0-or-later
# What is handed out: the sources, which the feed and the product page offer, by
#   cmake --build build/PRESET --target package_source
# and a package for the Debian on which it is built, by
#   cd build/release && cpack -G DEB
set(CPACK_PACKAGE_NAME marrowbeck)
set(CPACK_PACKAGE_VENDOR "Marrowbeck developers")
set(CPACK_PACKAGE_CONTACT "Marrowbeck developers <${MARROWBECK_CONTACT}>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_RELEASE_TIME ${release_time})
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/packaging/PackageKinds.cmake)

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME marrowbeck-${PROJECT_VERSION})
set(CPACK_SOURCE_IGNORE_FILES "${PROJECT_SOURCE_DIR}/build/" "/\\\\.git(/|$)" "\\\\.swp$"
                              "${PROJECT_SOURCE_DIR}/\\\\.cache/")
set(CPACK_OUTPUT_FILE_PREFIX ${PROJECT_BINARY_DIR}/site/root/photography/marrowbeck)
# The page tells the checksum of what it offers.
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/site/Checksum.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "takes stock of the images in a folder
Drop a folder onto the window, and Marrowbeck lists every image in it, one in
a row: name, size in memory and on disk, dimensions in pixels, colour profile,
copyright, keywords, kind, orientation and caption, with a preview, the camera
data and the facts of the selected image beside the list.
.
The same list is printed for scripts as CSV or JSON. Images are read by
helpers that can touch nothing but the image they were given, and are never
changed.")
if(site_pages)
  set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${site_pages}/marrowbeck.html")
endif()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What is no library and yet needed: the types of files, and the format of one of the program's own pictures; and, less
# so, the session bus, a window without X11, the desktop's own dialogs, and its browser.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "shared-mime-info, qt6-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "default-dbus-session-bus | dbus-session-bus, qt6-wayland, qt6-gtk-platformtheme, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)

include(CPack)
