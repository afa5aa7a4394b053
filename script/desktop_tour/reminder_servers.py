"""The programs that show notifications: how each is started, and what it does with the mouse."""
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

from .bars import prepare_sway
from .plasma import PLASMA_CONFIG
from .shells import prepare_gnome, prepare_plasma, start_gnome


@dataclass(frozen=True)
class NotificationServer:
    """One of them, set up as it comes."""

    desktop: str  # as in XDG_CURRENT_DESKTOP
    start: Callable  # starts it, and what it needs, given the session
    quiet: Callable  # switches do-not-disturb on or off, given the session and True or False
    body_opens: bool = True  # whether a click on the body opens the link
    has_button: bool = True  # whether it shows buttons
    opens_too: str = ""  # another button of the mouse that opens the link, in xdotool's words
    at_bottom: bool = False  # whether it shows them in the lower half of the screen
    bar: int = 0  # height of the bar at that edge, in pixels
    hover: bool = False  # whether buttons are shown only under the pointer
    ordinary_user: bool = False  # some refuse root


def start_xfce(session):
    session.start("window-manager", "xfwm4", "--compositor=off")
    server = next(Path("/usr/lib").glob("*/xfce4/notifyd/xfce4-notifyd"))
    session.start("server", str(server))


def start_dunst(session):
    session.start_window_manager()
    session.start("server", "dunst")


def start_mako(session):
    # It has no such mode of its own; its manual says to add one.
    session.write("mako/config", "[mode=do-not-disturb]\ninvisible=1\n")
    prepare_sway(session, 1)
    session.own()
    session.start("server", "mako", **session.inside)


def start_plasma(session):
    prepare_plasma(session, "breeze-dark")
    session.write("plasma-org.kde.plasma.desktop-appletsrc", PLASMA_CONFIG.replace(
        "extraItems=\n", "extraItems=org.kde.plasma.notifications\n"))
    session.start("server", "plasmashell")


def start_gnome_shell(session):
    prepare_gnome(session)
    start_gnome(None, session)


def quiet_plasma(session, quiet):
    year = 2099 if quiet else 2001
    session.write("plasmanotifyrc", f"[DoNotDisturb]\nUntil={year},1,1,0,0,0\n")
    key = ", ".join(f"byte {letter}" for letter in b"Until")
    session.run("gdbus", "emit", "--session", "--object-path", "/plasmanotifyrc",
                "--signal", "org.kde.kconfig.notify.ConfigChanged",
                f"@a{{saay}} {{'DoNotDisturb': [[{key}]]}}")


def boolean(value):
    return "true" if value else "false"


SERVERS = {
    "xfce": NotificationServer(
        "XFCE", start_xfce, body_opens=False,
        quiet=lambda session, quiet: session.run(
            "xfconf-query", "-c", "xfce4-notifyd", "-p", "/do-not-disturb", "-n", "-t", "bool",
            "-s", boolean(quiet))),
    "dunst": NotificationServer(
        "", start_dunst, body_opens=False, has_button=False, opens_too="2",
        quiet=lambda session, quiet: session.run("dunstctl", "set-paused", boolean(quiet))),
    "mako": NotificationServer(
        "sway", start_mako, has_button=False, ordinary_user=True,
        quiet=lambda session, quiet: session.run(
            "makoctl", "mode", "-s", "do-not-disturb" if quiet else "default")),
    "plasma": NotificationServer(
        "KDE", start_plasma, at_bottom=True, bar=44, quiet=quiet_plasma),
    "gnome": NotificationServer(
        "GNOME", start_gnome_shell, bar=32, hover=True, ordinary_user=True,
        quiet=lambda session, quiet: session.run(
            "gsettings", "set", "org.gnome.desktop.notifications", "show-banners",
            boolean(not quiet))),
}
