"""The bars that are tried: how each is started, and where it is on the screen."""
import json
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

from .session import wait_until

XFCE_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/><value type="int" value="2"/><value type="int" value="3"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray"/>
    <property name="plugin-3" type="string" value="clock"/>
  </property>
</channel>
"""

LXQT_PANEL = """panels=panel1
[panel1]
alignment=-1
animation-duration=0
iconSize=22
lineCount=1
panelSize=32
plugins=spacer, statusnotifier, worldclock
position=Bottom
reserve-space=true
width=100
width-percent=true
[spacer]
type=spacer
expandable=true
[statusnotifier]
type=statusnotifier
alignment=Right
[worldclock]
type=worldclock
alignment=Right
"""

MATE_PANEL = """[org/mate/panel/general]
toplevel-id-list=['top']
object-id-list=['clock','status-area']

[org/mate/panel/toplevels/top]
expand=true
orientation='top'
size=28

[org/mate/panel/objects/clock]
object-type='applet'
applet-iid='ClockAppletFactory::ClockApplet'
toplevel-id='top'
position=0
relative-to-edge='end'
locked=true

[org/mate/panel/objects/status-area]
object-type='applet'
applet-iid='NotificationAreaAppletFactory::NotificationArea'
toplevel-id='top'
position=10
relative-to-edge='end'
locked=true
"""

I3_CONFIG = """# i3 config file (v4)
font pango:DejaVu Sans 10
bindsym Mod4+Return exec true
bar {
  position top
  status_command while :; do date +%H:%M; sleep 60; done
}
"""

POLYBAR_CONFIG = """[bar/top]
width = 100%
height = 24
background = #222222
foreground = #dfdfdf
modules-right = date
tray-position = right
font-0 = DejaVu Sans:size=10
[module/date]
type = internal/date
date = %H:%M
"""

SWAY_CONFIG = """output X11-1 resolution {screen} scale {scale}
output X11-1 bg #336699 solid_color
exec env > {config}/session-environment
exec waybar -c {config}/waybar.json -s {config}/waybar.css
"""

WAYBAR_CONFIG = {
    "layer": "top",
    "position": "top",
    "height": 30,
    "modules-right": ["tray", "clock"],
    "tray": {"icon-size": 22, "spacing": 8},
}

WAYBAR_STYLE = """* { font-family: sans-serif; font-size: 13px; }
window#waybar { background-color: #2b303b; color: #ffffff; }
#clock, #tray { padding: 0 10px; }
"""


@dataclass(frozen=True)
class Host:
    """A bar."""

    desktop: str  # as in XDG_CURRENT_DESKTOP
    thickness: int  # of the bar, in pixels
    start: Callable  # starts it in a session; its process
    at_bottom: bool = False
    expects: str = "text"  # what is seen: "text" or "short text"
    beside_bar: bool = True  # whether the panel can be where the item was pressed
    restarts: bool = True  # whether it can be restarted by itself
    stands_alone: bool = True  # whether there is anything of it before it has an item
    from_right: int = 0  # the item's middle, where more than it moves; 0: only it appears
    scale: float = 1  # pixels a point
    layered: bool = False  # whether the panel is in front of all windows until it is closed

    @property
    def screen(self):
        """The size of the screen, in pixels."""
        return int(1280 * self.scale), int(800 * self.scale)


def start_xfce(session):
    session.write("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", XFCE_PANEL)
    xfconfd = next(Path("/usr/lib").glob("*/xfce4/xfconf/xfconfd"))
    session.start("xfconfd", str(xfconfd))
    session.start("window-manager", "xfwm4", "--compositor=off")
    return session.start("host", "xfce4-panel")


def start_lxqt(session):
    session.write("lxqt/panel.conf", LXQT_PANEL)
    session.write("lxqt/lxqt.conf", "[General]\ntheme=debian\nicon_theme=Adwaita\n")
    session.start("window-manager", "openbox")
    return session.start("host", "lxqt-panel")


def start_mate(session):
    session.write("glib-2.0/settings/keyfile", MATE_PANEL)
    session.start("window-manager", "openbox")
    return session.start("host", "mate-panel")


def on_openbox(*command, **files):
    """Starts a bar that needs nothing but a window manager."""

    def start(session):
        for name, text in files.items():
            session.write(name, text)
        session.start("window-manager", "openbox")
        return session.start("host", *(part.format(config=session.config) for part in command))

    return start


def start_i3(session):
    session.write("i3/config", I3_CONFIG)
    return session.start("host", "i3")


def on_sway(scale):
    """Starts waybar in a compositor with so many pixels a point."""
    return lambda session: start_sway(session, scale)


def start_sway(session, scale):
    config = SWAY_CONFIG.format(config=session.config, screen=session.screen, scale=scale)
    session.write("sway/config", config)
    session.write("waybar.json", json.dumps(WAYBAR_CONFIG))
    session.write("waybar.css", WAYBAR_STYLE)
    process = session.start(
        "host", "sway", WLR_BACKENDS="x11", WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1",
        XDG_SESSION_TYPE="wayland",
    )
    told = session.config / "session-environment"

    def inside():
        lines = told.read_text().splitlines() if told.exists() else []
        found = dict(line.split("=", 1) for line in lines if "=" in line)
        return found if "SWAYSOCK" in found and "WAYLAND_DISPLAY" in found else None

    if not (found := wait_until(inside)):
        raise RuntimeError("sway started nothing")
    # Without XWayland there is no display of the old kind.
    session.inside = {"DISPLAY": found.get("DISPLAY", ""), "XDG_SESSION_TYPE": "wayland",
                      "WAYLAND_DISPLAY": found["WAYLAND_DISPLAY"]}
    return process


TRAYER = ("trayer", "--edge", "top", "--align", "right", "--widthtype", "request",
          "--height", "24", "--tint", "0x222222", "--alpha", "0", "--transparent", "true")

HOSTS = {
    "xfce": Host("XFCE", 28, start_xfce, expects="short text"),
    "lxqt": Host("LXQt", 32, start_lxqt, at_bottom=True, expects="short text", from_right=61),
    "mate": Host("MATE", 28, start_mate),
    "waybar": Host("sway", 30, on_sway(1), restarts=False, layered=True),
    "waybar-1.5": Host("sway", 45, on_sway(1.5), restarts=False, layered=True, scale=1.5),
    "waybar-2": Host("sway", 60, on_sway(2), restarts=False, layered=True, scale=2),
    "i3": Host("i3", 22, start_i3, expects="short text", restarts=False, from_right=12,
               stands_alone=False),
    "tint2": Host("", 30, on_openbox("tint2"), at_bottom=True, expects="short text"),
    "polybar": Host(
        "", 24, on_openbox("polybar", "-c", "{config}/polybar.ini", "top",
                           **{"polybar.ini": POLYBAR_CONFIG}),
        expects="short text", from_right=12,
    ),
    "trayer": Host("", 24, on_openbox(*TRAYER), expects="short text", stands_alone=False),
}
