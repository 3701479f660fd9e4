# `cpack` in a build folder makes the Debian package from the install rules. The libraries it needs are
# found by dpkg-shlibdeps; the font the window asks for is named by hand, since nothing links against it.
# The menu, file-type and icon caches are refreshed by the dpkg triggers of the packages that own them, so
# the package needs no scripts of its own.
set(CPACK_PACKAGE_NAME tarvelin)
set(CPACK_PACKAGE_VENDOR Pelvora)
set(CPACK_PACKAGE_CONTACT "Pelvora <tarvelin@pelvora.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "decision aid that weighs options against attributes")
set(CPACK_PACKAGE_DESCRIPTION
    "Tarvelin helps you make a decision. You describe it as a topic: the options you choose between and\n"
    "the attributes you judge them by. Every attribute has a weighting and every option a rating for\n"
    "every attribute, set with sliders, and Tarvelin shows each option's weighted score as a bar, the\n"
    "best one in gold. Topics are saved as .tvt files and exchanged with spreadsheets as CSV.")
string(JOIN "" CPACK_PACKAGE_DESCRIPTION ${CPACK_PACKAGE_DESCRIPTION})
set(CPACK_PACKAGE_HOMEPAGE_URL https://pelvora.com/tarvelin)
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-comic-neue)
include(CPack)
