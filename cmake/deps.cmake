# Libraries from Debian packages that the engine stands on. Each subsystem
# that needs one adds it here, so that the library, the tests and the tool
# link the same set.
list(APPEND TQ_LINK_LIBS pthread)
# The host's drawing surfaces and fonts: Cairo image surfaces, Pango text.
pkg_check_modules(TQ_PANGOCAIRO REQUIRED IMPORTED_TARGET pangocairo)
list(APPEND TQ_LINK_LIBS PkgConfig::TQ_PANGOCAIRO)
