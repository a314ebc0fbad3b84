# The Debian package: `cpack --preset deb` after a build of the preset `package`.
set(CPACK_PACKAGE_NAME quillane)
set(CPACK_PACKAGE_VENDOR "The Quillane developers")
set(CPACK_PACKAGE_CONTACT "The Quillane developers <quillane@calder.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "stress-driven topology optimization of plates")
set(CPACK_PACKAGE_DESCRIPTION
"Quillane lets the stress in a plate decide where the plate needs its material.
A domain of square cells is drawn, held and loaded with the mouse; the program
analyses its stresses in plane stress and takes and gives material step by
step until a structure of well-used members is left.
.
The package holds the window program quillane, its companion quillane-batch
for the command line, examples and the manual.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The messages are partly Japanese: without such a font they would be boxes.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-noto-cjk | fonts-japanese-gothic")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gnuplot, parallel, ffmpeg")

include(CPack)
