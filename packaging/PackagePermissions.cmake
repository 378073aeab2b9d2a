# SPDX-License-Identifier: GPL-2.0-or-later
# Run by CPack before it closes the package: folders are made with the umask of whoever builds it, which would shut
# everybody else out of the tools' folder, or let a group write there.
file(CHMOD_RECURSE ${CPACK_TEMPORARY_DIRECTORY} DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
     GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
