# Installing: the library with its headers and the files that let other
# builds find it (pkg-config, a CMake package); the tool with its man page,
# its shell completion and the bundled data; the notes on the data we build
# from. `cpack -G DEB` in the build tree makes a Debian package of the lot.
include(CMakePackageConfigHelpers)

set(TQ_CMAKE_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/tqcomm2006)
set(TQ_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS tqcomm2006 EXPORT tqcomm2006Targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${CMAKE_SOURCE_DIR}/include/tqcomm2006.h ${CMAKE_SOURCE_DIR}/include/tqhost.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tqcomm2006)
install(TARGETS tqcomm RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# Everything under data/ is the tool's bundled data, whatever lands there.
install(DIRECTORY ${CMAKE_SOURCE_DIR}/data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tqcomm)
install(FILES ${CMAKE_SOURCE_DIR}/tools/tqcomm/tqcomm.bash-completion RENAME tqcomm
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${CMAKE_SOURCE_DIR}/docs/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The man page goes in compressed, as man-db and Debian expect.
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/tqcomm.1.gz
                   COMMAND gzip -9n -c ${CMAKE_SOURCE_DIR}/docs/tqcomm.1 > ${CMAKE_BINARY_DIR}/tqcomm.1.gz
                   DEPENDS ${CMAKE_SOURCE_DIR}/docs/tqcomm.1 VERBATIM)
add_custom_target(tqcomm_manpage ALL DEPENDS ${CMAKE_BINARY_DIR}/tqcomm.1.gz)
install(FILES ${CMAKE_BINARY_DIR}/tqcomm.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# pkg-config: the prefix is found from where the .pc file lies, so that an
# install with `cmake --install --prefix` elsewhere is right too.
file(RELATIVE_PATH TQ_PC_TO_PREFIX /${TQ_PKGCONFIG_DIR} /)
string(REGEX REPLACE "/$" "" TQ_PC_TO_PREFIX "${TQ_PC_TO_PREFIX}")
configure_file(${CMAKE_SOURCE_DIR}/cmake/tqcomm2006.pc.in ${CMAKE_BINARY_DIR}/tqcomm2006.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/tqcomm2006.pc DESTINATION ${TQ_PKGCONFIG_DIR})

# find_package(tqcomm2006) gives the imported target tqcomm2006::tqcomm2006.
install(EXPORT tqcomm2006Targets NAMESPACE tqcomm2006:: DESTINATION ${TQ_CMAKE_PACKAGE_DIR})
configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/tqcomm2006Config.cmake.in
                              ${CMAKE_BINARY_DIR}/tqcomm2006Config.cmake INSTALL_DESTINATION ${TQ_CMAKE_PACKAGE_DIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/tqcomm2006ConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/tqcomm2006Config.cmake ${CMAKE_BINARY_DIR}/tqcomm2006ConfigVersion.cmake
        DESTINATION ${TQ_CMAKE_PACKAGE_DIR})

# The Debian package: one package with the library, the headers and the
# tool. The libraries it links are found by dpkg-shlibdeps; the fonts the
# host draws with and espeak-ng's voices are named here, since nothing links
# them.
set(TQ_PACKAGE_MAINTAINER "tqcomm2006 developers <tqcomm2006@localhost>"
    CACHE STRING "The Maintainer field of the Debian package")
set(CPACK_PACKAGE_NAME tqcomm2006)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${TQ_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "engine library and command-line tool for learning English vocabulary")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "The engine of a desktop suite for Chinese speakers who learn English vocabulary:
word books with a forgetting-curve scheduler, English-Chinese dictionaries,
sounds, audio lessons, quiz pages and word pages, behind a flat C interface
(GBK text). The tqcomm tool runs a day's learning in the terminal and builds
dictionaries, pages, quizzes and listening lessons; it comes with a sample
word list, a sample dictionary source, sample question banks and the letter
sounds that spell words in lessons.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION education)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-wqy-microhei, fonts-dejavu-core, espeak-ng-data")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "sox")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "wordnet-base, python3-jieba, xdg-utils")
set(CPACK_GENERATOR DEB)
include(CPack)
