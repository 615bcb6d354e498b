# cpack runs this before it packs the installed tree, to make the tree follow Debian's policy.
#
# Everything common to all installations is in cmake/Install.cmake; here are only the differences of a package.

set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)
set(doc ${root}/share/doc/wren)
set(readable FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

# The copyright file has the licences, and refers to the text of the GPL, which every Debian system has.
file(REMOVE_RECURSE ${doc}/LICENSE ${doc}/LICENSES)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${doc} ${readable})

# Debian's zsh looks here for files of packages; site-functions is for the machine's administrator.
file(RENAME ${root}/share/zsh/site-functions ${root}/share/zsh/vendor-completions)

# Compressed without a time, so that the same source gives the same package.
file(COPY ${CPACK_WREN_CHANGELOG} DESTINATION ${doc} ${readable})
file(GLOB manuals ${root}/share/man/man1/*.1)
execute_process(COMMAND gzip -9 --no-name ${doc}/changelog ${manuals} COMMAND_ERROR_IS_FATAL ANY)

# Everybody may read these directories, for any umask of the builder.
file(CHMOD_RECURSE ${root} DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
