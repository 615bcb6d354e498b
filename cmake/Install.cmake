# The layout of "cmake --install". The programs find everything relative to themselves
# (PluginBundle::DefaultDirectory), so that the installed tree can be moved as a whole. "lib/wren" is therefore never a
# distribution's lib64 or lib/<triplet>.

set(WREN_LIBRARY_DIRECTORY lib/wren)
set(WREN_BUNDLE_DIRECTORY ${WREN_LIBRARY_DIRECTORY}/Declaration.bundle/Contents)
# In the build tree, the same relative paths lead to the framework. CMake would otherwise pad the run paths with empty
# names, and for these the system searches the current directory, which may belong to anybody.
set_target_properties(wren PROPERTIES INSTALL_RPATH "$ORIGIN/../${WREN_LIBRARY_DIRECTORY}:$ORIGIN")
set_target_properties(Declaration PROPERTIES INSTALL_RPATH "$ORIGIN/../../..")
set_target_properties(wren Declaration PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
install(TARGETS wren RUNTIME DESTINATION bin)
install(TARGETS vetch LIBRARY DESTINATION ${WREN_LIBRARY_DIRECTORY})
install(TARGETS Declaration LIBRARY DESTINATION ${WREN_BUNDLE_DIRECTORY}/Linux)
install(TARGETS cplustags RUNTIME DESTINATION ${WREN_BUNDLE_DIRECTORY}/Resources)
install(FILES resources/DeclarationDialogs.ui resources/Declaration.icns DESTINATION ${WREN_BUNDLE_DIRECTORY}/Resources)
install(FILES resources/Info.plist DESTINATION ${WREN_BUNDLE_DIRECTORY})
# One program under two names, so that users and the plug-in never run two different ones.
install(CODE "
    set(link \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/cplustags\")
    message(STATUS \"Installing: \${link}\")
    file(CREATE_LINK ../${WREN_BUNDLE_DIRECTORY}/Resources/cplustags \"\${link}\" SYMBOLIC)
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${CMAKE_INSTALL_PREFIX}/bin/cplustags\")")

install(FILES docs/man/wren.1 docs/man/cplustags.1 DESTINATION share/man/man1)
install(FILES LICENSE README.md docs/guide.md DESTINATION share/doc/wren)
install(FILES LICENSES/CLI11.txt LICENSES/nlohmann-json.txt LICENSES/utfcpp.txt DESTINATION share/doc/wren/LICENSES)
install(FILES packaging/completions/wren.bash RENAME wren DESTINATION share/bash-completion/completions)
install(FILES packaging/completions/cplustags.bash RENAME cplustags DESTINATION share/bash-completion/completions)
install(FILES packaging/completions/wren.zsh RENAME _wren DESTINATION share/zsh/site-functions)
install(FILES packaging/completions/cplustags.zsh RENAME _cplustags DESTINATION share/zsh/site-functions)
install(FILES packaging/completions/wren.fish packaging/completions/cplustags.fish
    DESTINATION share/fish/vendor_completions.d)

if(WREN_DESKTOP)
    set_target_properties(wren-desktop PROPERTIES INSTALL_RPATH "$ORIGIN" BUILD_WITH_INSTALL_RPATH ON)
    install(TARGETS wren-desktop RUNTIME DESTINATION ${WREN_LIBRARY_DIRECTORY})
    install(FILES packaging/wren.desktop DESTINATION share/applications)
    install(DIRECTORY resources/icons/ DESTINATION share/icons)
    install(FILES resources/Wren.svg RENAME wren.svg DESTINATION share/icons/hicolor/scalable/apps)
    install(FILES LICENSES/GPL-3.0.txt DESTINATION share/doc/wren/LICENSES)
endif()
