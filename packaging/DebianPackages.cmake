# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
#
# `cpack` makes the packages vexta and, with the desktop built, vexta-desktop. Their libraries are found by
# dpkg-shlibdeps; scripts/make-packages does all of it.
set(VEXTA_PACKAGE_MAINTAINER "The Vexta authors <vexta@packages.invalid>" CACHE STRING
    "Whom the packages name as their maintainer; changelog entries are theirs as well")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vexta)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${VEXTA_PACKAGE_MAINTAINER})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL vexta)
set(CPACK_DEB_COMPONENT_INSTALL ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE vexta)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_VEXTA_PACKAGE_NAME vexta)
set(CPACK_COMPONENT_VEXTA_DESCRIPTION "Vexta reads the paired-end sequencing reads of a patient, finds without
alignment the read pairs that carry the target sequences of a catalogue,
counts them, and calls each target with binomial thresholds.

This package holds the command line, the demonstration catalogue, which has
not been validated for diagnosis, a sample run of made-up patients, the
generator of such reads, and the documentation.")

if(BUILD_DESKTOP)
    list(APPEND CPACK_COMPONENTS_ALL desktop)
    set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME vexta-desktop)
    # The very same version: both read and write the same result documents and settings.
    set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS "vexta (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
    set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS "qt6-wayland")
    set(CPACK_COMPONENT_DESKTOP_DESCRIPTION "Vexta reads the paired-end sequencing reads of a patient, finds without
alignment the read pairs that carry the target sequences of a catalogue,
counts them, and calls each target with binomial thresholds.

This package holds the window: patients, their germline and somatic calls,
and the counts behind each call.")
endif()

include(CPack)
