# Libraries from Debian packages that the engine stands on. Each subsystem
# that needs one adds it here, so that the library, the tests and the tool
# link the same set.
list(APPEND TQ_LINK_LIBS pthread)
