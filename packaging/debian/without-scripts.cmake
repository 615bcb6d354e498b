# cpack runs this on the finished package, to remove the scripts that it adds.
#
# These call ldconfig, because cpack takes every library below /usr/lib for one that the whole system links. Only the
# programs' own run paths lead to the library in /usr/lib/wren.

foreach(package ${CPACK_PACKAGE_FILES})
    set(root ${CPACK_TEMPORARY_DIRECTORY}/unpacked)
    file(REMOVE_RECURSE ${root})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${root} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${root}/DEBIAN/postinst ${root}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${root} ${package}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
