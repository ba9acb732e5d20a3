SUMMARY = "Settings tool of a vehicle display computer"
LICENSE = "CLOSED"

# Replace with the URL of your repository and the commit.
SRC_URI = "git://git.example.org/fobrob.git;protocol=https;branch=main"
SRCREV = "0000000000000000000000000000000000000000"
S = "${WORKDIR}/git"

inherit cmake systemd

# Replace with the recipe and the package that provide the unit's device library.
DEPENDS = "qv-aux2"
RDEPENDS:${PN} = "qv-aux2"
EXTRA_OECMAKE = "-DQV_AUX2_LIBRARY=${STAGING_LIBDIR}/libqv-aux2.so.2.11"

do_install:append() {
    install -D -m 0644 -t ${D}${systemd_system_unitdir} ${S}/examples/fobrob-boot-completed.service
}

SYSTEMD_SERVICE:${PN} = "fobrob-boot-completed.service"
FILES:${PN} += "${datadir}/bash-completion ${datadir}/fish ${datadir}/zsh"
