# Run by cpack on the package that it has made: takes the scripts out that it adds.
#
# They call ldconfig, since it takes every library below /usr/lib for one that the whole system links. The one in
# /usr/lib/wren is found by the programs' own run paths, and by nobody else.

foreach(package ${CPACK_PACKAGE_FILES})
    set(root ${CPACK_TEMPORARY_DIRECTORY}/unpacked)
    file(REMOVE_RECURSE ${root})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${root} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${root}/DEBIAN/postinst ${root}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${root} ${package}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
