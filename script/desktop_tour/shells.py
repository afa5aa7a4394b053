"""Whole desktops, which take longer to start."""
import shutil
import time
from dataclasses import replace
from pathlib import Path

from .host import Host
from .mate import WITH_INDICATORS, prepare_mate
from .plasma import ACTIVITIES, PLASMA_CONFIG
from .session import FONT, GROUND, wait_until

BACKGROUND = f"""picture-options='none'
primary-color='{GROUND}'
color-shading-type='solid'
"""

BUDGIE = """[org/gnome/desktop/background]
picture-options='zoom'
picture-uri='file://{ground}'
picture-uri-dark='file://{ground}'
"""

ICON = Path(__file__).resolve().parents[2] / "data/icons/com.lumora.app-symbolic.svg"

EXTENSION = "ubuntu-appindicators@ubuntu.com"

GNOME = f"""[org/gnome/shell]
enabled-extensions=['{EXTENSION}']
disable-user-extensions=false
welcome-dialog-last-shown-version='99'

[org/gnome/desktop/interface]
enable-animations=false
clock-format='24h'

[org/gnome/desktop/background]
{BACKGROUND}
[org/gnome/desktop/lockdown]
disable-lock-screen=true

[org/gnome/desktop/session]
idle-delay=uint32 0
"""

CINNAMON = f"""[org/cinnamon]
enabled-applets=['panel1:left:0:calendar@cinnamon.org:1', 'panel1:right:0:xapp-status@cinnamon.org:2']
next-applet-id=3
desktop-effects=false
startup-animation=false

[org/cinnamon/desktop/background]
{BACKGROUND}"""


def libexec(*names):
    """The first of these programs that is there; they are in no search path."""
    folders = ("/usr/libexec", "/usr/lib/x86_64-linux-gnu/libexec", "/usr/lib/*/libexec",
               "/usr/libexec/*", "/usr/libexec/*/*", "/usr/lib/*/xapps", "/usr/lib/*")
    for folder in folders:
        for name in names:
            for found in Path("/").glob(f"{folder[1:]}/{name}"):
                return str(found)
    raise RuntimeError(f"there is no {names[0]}")


def version_of_plasma():
    return "6" if Path("/usr/bin/kded6").exists() else "5"


def configure_plasma(session, theme, colors):
    session.environment |= {
        "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": version_of_plasma(),
        "DESKTOP_SESSION": "plasma", "XDG_SESSION_DESKTOP": "KDE",
        "XDG_CONFIG_DIRS": f"{session.config}/kdedefaults:/etc/xdg",
    }
    family, size = FONT.rsplit(" ", 1)
    scheme = Path(f"/usr/share/color-schemes/{colors}.colors").read_text()
    session.write("kdeglobals", f"{scheme}\n[General]\nColorScheme={colors}\n"
                  f"font={family},{size},-1,5,50,0,0,0,0,0\n")
    session.write("plasmarc", f"[Theme]\nname={theme}\n")
    session.write("kactivitymanagerdrc", ACTIVITIES)
    session.write("baloofilerc", "[Basic Settings]\nIndexing-Enabled=false\n")
    session.write("kwinrc", "[Compositing]\nEnabled=false\n")
    session.write("plasma-org.kde.plasma.desktop-appletsrc", PLASMA_CONFIG)
    session.write("plasmashellrc", "[PlasmaViews][Panel 2]\nfloating=0\n\n"
                  "[PlasmaViews][Panel 2][Defaults]\nthickness=44\n")


def start_helpers(session):
    session.start("daemon", f"kded{version_of_plasma()}", **session.inside)
    session.start("activities", libexec("kactivitymanagerd"), **session.inside)


def prepare_plasma(session, theme):
    configure_plasma(session, theme, "BreezeLight")
    session.start("window-manager", "kwin_x11")
    start_helpers(session)


def prepare_plasma_wayland(session, theme, colors):
    """Here the windows' colours go with the bar's."""
    configure_plasma(session, theme, colors)
    # The installed one may do more than an ordinary program, which not every machine allows.
    compositor = shutil.copy("/usr/bin/kwin_wayland", session.folder)
    session.own()
    width, height = session.screen.split("x")
    session.start(
        "compositor", str(compositor), "--x11-display", session.environment["DISPLAY"],
        "--width", width, "--height", height, "--socket", "wayland-0")
    if not wait_until((Path(session.environment["XDG_RUNTIME_DIR"]) / "wayland-0").exists):
        raise RuntimeError("the compositor does not start")
    session.inside = {"DISPLAY": "", "WAYLAND_DISPLAY": "wayland-0", "XDG_SESSION_TYPE": "wayland",
                      "QT_QPA_PLATFORM": ""}
    start_helpers(session)


def prepare_mate_indicators(session, theme):
    icons = session.folder / "home/.local/share/icons/hicolor/symbolic/apps"
    icons.mkdir(parents=True)
    (icons / ICON.name).write_bytes(ICON.read_bytes())
    prepare_mate(session, theme, WITH_INDICATORS)
    session.start("indicators", libexec("ayatana-indicator-application-service"))


def prepare_gnome(session):
    session.write("glib-2.0/settings/keyfile", GNOME)
    session.environment |= {
        "XDG_SESSION_DESKTOP": "gnome", "DESKTOP_SESSION": "gnome", "USER": "nobody",
        "MUTTER_DEBUG_DUMMY_MODE_SPECS": session.screen,
    }
    session.own()
    session.start_system_bus()


def start_gnome(_, session):
    shell = session.start("bar", "gnome-shell", "--nested", "--wayland")
    if not (found := wait_until(lambda: x_display_inside(session))):
        raise RuntimeError("the shell started no X server")
    leave_overview(session)
    session.inside = found | {"WAYLAND_DISPLAY": "wayland-0", "XDG_SESSION_TYPE": "wayland"}
    return shell


def x_display_inside(session):
    """Where the X server that a shell has started is, and the key to it; None while there is none.
    Others start servers too at any time, so it is known by the folder of its key."""
    run = session.environment["XDG_RUNTIME_DIR"]
    for process in Path("/proc").glob("[0-9]*/cmdline"):
        try:
            words = process.read_text().split("\0")
        except OSError:  # it has ended, or is somebody else's
            continue
        if Path(words[0]).name == "Xwayland":
            display = next((word for word in words if word.startswith(":")), None)
            key = next((word for word in words if word.startswith(f"{run}/")), None)
            if display and key:
                return {"DISPLAY": display, "XAUTHORITY": key}
    return None


def leave_overview(session):
    """GNOME begins with all windows side by side."""
    def call(*arguments):
        return session.run("gdbus", "call", "--session", "--dest", "org.gnome.Shell",
                           "--object-path", "/org/gnome/Shell", "--method", *arguments)

    active = ("org.freedesktop.DBus.Properties.Get", "org.gnome.Shell", "OverviewActive")
    wait_until(lambda: "true" in call(*active).lower())
    call("org.freedesktop.DBus.Properties.Set", "org.gnome.Shell", "OverviewActive", "<false>")
    wait_until(lambda: "false" in call(*active).lower())


def restart_extension(_, session, shell):
    """On Wayland GNOME itself ends with the session; a screen lock does this to its extensions."""
    for change in ("disable", "enable"):
        session.run("gnome-extensions", change, EXTENSION)
        time.sleep(2)
    return shell


def prepare_cinnamon(session):
    session.write("glib-2.0/settings/keyfile", CINNAMON)
    session.environment |= {"XDG_SESSION_DESKTOP": "cinnamon", "DESKTOP_SESSION": "cinnamon"}
    session.start("watcher", libexec("xapp-sn-watcher"))


def prepare_budgie(session):
    session.environment |= {"XDG_SESSION_DESKTOP": "budgie-desktop"}
    # It paints plain colours only behind some of its own pictures.
    ground = session.folder / "ground.png"
    session.run("convert", "-size", "64x64", f"xc:{GROUND}", str(ground))
    session.write("glib-2.0/settings/keyfile", BUDGIE.format(ground=ground))
    session.start_system_bus()
    session.start("window-manager", "budgie-wm", "--x11")
    session.start("daemon", "budgie-daemon")


PLASMA = Host("KDE", 44, lambda session: prepare_plasma(session, "breeze-dark"),
              ("plasmashell",), at_bottom=True, expects="short text", patience=4)

# On Wayland that version's bar keeps less room free than it draws on.
DRAWN_TWICE_BY_PLASMA_5 = 7

PLASMA_WAYLAND = replace(
    PLASMA, prepare=lambda session: prepare_plasma_wayland(session, "breeze-dark", "BreezeDark"),
    layered=True, ordinary_user=True,
    covered=0 if version_of_plasma() == "6" else DRAWN_TWICE_BY_PLASMA_5)

MATE_INDICATORS = Host(
    "MATE", 28, lambda session: prepare_mate_indicators(session, "Adwaita"), ("mate-panel",),
    press=("click", "1", "sleep", "1", "key", "Down", "Return"), closes=("key", "Escape"),
    stands_alone=False)

SHELLS = {
    "plasma": PLASMA,
    "plasma-light": replace(
        PLASMA, prepare=lambda session: prepare_plasma(session, "breeze-light")),
    "plasma-wayland": PLASMA_WAYLAND,
    "plasma-wayland-light": replace(
        PLASMA_WAYLAND,
        prepare=lambda session: prepare_plasma_wayland(session, "breeze-light", "BreezeLight")),
    "gnome": Host("GNOME", 32, prepare_gnome, start=start_gnome, ordinary_user=True,
                  restart=restart_extension, comes_later=False, has_clock=True, patience=4,
                  press=("click", "--repeat", "2", "--delay", "90", "1"), closes=("key", "Escape"),
                  has_menu=True),
    "cinnamon": Host("X-Cinnamon", 40, prepare_cinnamon, ("cinnamon", "--replace"), at_bottom=True,
                     patience=4),
    "budgie": Host("Budgie:GNOME", 36, prepare_budgie, ("budgie-panel",), at_bottom=True,
                   expects="short text", has_clock=True, patience=4),
    "mate-indicators": MATE_INDICATORS,
    "mate-indicators-dark": replace(
        MATE_INDICATORS,
        prepare=lambda session: prepare_mate_indicators(session, "Adwaita-dark")),
}
