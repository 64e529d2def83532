# What `cmake --install` puts where, by the GNU layout, and the Debian
# package CPack makes of it (`cpack -G DEB` in a build folder).

set(SUIZO_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/suizo-viewer)

install(TARGETS suizo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES docs/man/suizo.1 docs/man/suizo-viewer.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# The sample fills a user's own data folder on the first start.
install(DIRECTORY data/sample/ DESTINATION ${SUIZO_SAMPLE_DIR})
install(FILES README.md docs/guide.ja.md DESTINATION ${SUIZO_DOC_DIR})
install(DIRECTORY docs/images/ DESTINATION ${SUIZO_DOC_DIR}/images)

if(SUIZO_BUILD_APP)
  install(TARGETS suizo-viewer RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES packaging/org.suizo.viewer.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES packaging/org.suizo.viewer.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(FILES packaging/org.suizo.viewer.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME suizo-viewer)
set(CPACK_PACKAGE_VENDOR "翠蔵Viewer")
set(CPACK_PACKAGE_CONTACT "翠蔵Viewer maintainers <maintainers@users.noreply.c-seed-2f177b5b.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "reader and search tool for a corpus of medieval Buddhist writings")
set(CPACK_PACKAGE_DESCRIPTION
    "翠蔵Viewer reads one scholarly corpus in Japanese: medieval Buddhist letters and treatises with their catalogue records, a dictionary, the Lotus Sutra with two outlines, historical sources and a chronology, in true vertical writing, with search that tolerates variant kanji and historical kana. The command-line tool suizo converts and searches the same corpus.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The library scan does not find the fonts the pages are set in.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-noto-cjk")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_FILE_NAME_SEPARATOR "_")
include(CPack)
