# Run by cpack before it packs the installed tree: makes of it what Debian's policy asks for.
#
# What is the same everywhere stays in cmake/Install.cmake; here is only what a package has otherwise.

set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)
set(doc ${root}/share/doc/wren)
set(readable FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

# The copyright file has the licences, and refers to the GPL's text, which every Debian system has.
file(REMOVE_RECURSE ${doc}/LICENSE ${doc}/LICENSES)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${doc} ${readable})

# Where Debian's zsh looks for what packages bring; site-functions is for the machine's administrator.
file(RENAME ${root}/share/zsh/site-functions ${root}/share/zsh/vendor-completions)

# Without a time in them, so that the same source gives the same package.
file(COPY ${CPACK_WREN_CHANGELOG} DESTINATION ${doc} ${readable})
file(GLOB manuals ${root}/share/man/man1/*.1)
execute_process(COMMAND gzip -9 --no-name ${doc}/changelog ${manuals} COMMAND_ERROR_IS_FATAL ANY)

# Whatever umask the builder has: these directories are everybody's.
file(CHMOD_RECURSE ${root} DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
