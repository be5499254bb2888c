# Libraries from Debian packages that the engine stands on. Each subsystem
# that needs one adds it here, so that the library, the tests and the tool
# link the same set.
list(APPEND TQ_LINK_LIBS pthread)
# The host's drawing surfaces and fonts: Cairo image surfaces, Pango text.
pkg_check_modules(TQ_PANGOCAIRO REQUIRED IMPORTED_TARGET pangocairo)
list(APPEND TQ_LINK_LIBS PkgConfig::TQ_PANGOCAIRO)
# The tool's dictionary builder (tools/tqcomm) takes pronunciations from
# libespeak-ng's phonemes; only the tool links it.
pkg_check_modules(TQTOOL_ESPEAK REQUIRED IMPORTED_TARGET espeak-ng)
list(APPEND TQCOMM_TOOL_LIBS PkgConfig::TQTOOL_ESPEAK)
# Sound: MPEG audio decoding on libmpg123, MP3 encoding on LAME.
pkg_check_modules(MPG123 REQUIRED IMPORTED_TARGET libmpg123)
pkg_check_modules(MP3LAME REQUIRED IMPORTED_TARGET lame)
list(APPEND TQ_LINK_LIBS PkgConfig::MPG123 PkgConfig::MP3LAME)
# Sound centre: speech on libespeak-ng (in the library too, not only the
# tool), its samples resampled by libsoxr.
pkg_check_modules(TQ_ESPEAK REQUIRED IMPORTED_TARGET espeak-ng)
pkg_check_modules(TQ_SOXR REQUIRED IMPORTED_TARGET soxr)
list(APPEND TQ_LINK_LIBS PkgConfig::TQ_ESPEAK PkgConfig::TQ_SOXR)
