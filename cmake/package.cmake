# The Debian packages: `cpack --preset deb` after a build of the preset `package`. One holds the
# window, one the command line, one the manual and the examples for both.
set(CPACK_PACKAGE_NAME quillane)
set(CPACK_PACKAGE_VENDOR "The Quillane developers")
set(CPACK_PACKAGE_CONTACT "The Quillane developers <quillane@calder.example>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL window batch doc)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(about
"Quillane lets the stress in a plate decide where the plate needs its material.
Its stresses are analysed in plane stress, and material is taken and given step
by step until a structure of well-used members is left.")

set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME quillane)
set(CPACK_DEBIAN_WINDOW_PACKAGE_SECTION science)
set(CPACK_DEBIAN_WINDOW_DESCRIPTION
"${about}
.
This package holds the window, in which a domain of square cells is drawn, held
and loaded with the mouse.")
# The messages are partly Japanese: without such a font they would be boxes.
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS "fonts-noto-cjk | fonts-japanese-gothic")
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS "quillane-doc, qt6-wayland")
set(CPACK_DEBIAN_WINDOW_PACKAGE_SUGGESTS "quillane-batch, gnuplot")

set(CPACK_DEBIAN_BATCH_PACKAGE_NAME quillane-batch)
set(CPACK_DEBIAN_BATCH_PACKAGE_SECTION science)
set(CPACK_DEBIAN_BATCH_DESCRIPTION
"${about}
.
This package holds the companion for the command line: sweeps, clusters,
pictures and films, without a display.")
set(CPACK_DEBIAN_BATCH_PACKAGE_RECOMMENDS "quillane-doc")
set(CPACK_DEBIAN_BATCH_PACKAGE_SUGGESTS "parallel, jq, gnuplot, ffmpeg")

set(CPACK_DEBIAN_DOC_PACKAGE_NAME quillane-doc)
set(CPACK_DEBIAN_DOC_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOC_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DOC_DESCRIPTION
"${about}
.
This package holds the manual with its pictures, and models to start from.")

include(CPack)
