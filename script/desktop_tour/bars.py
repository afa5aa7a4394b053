"""Bars that start in a second or two. None has a clock that moves: only the label shall."""
import json
from dataclasses import replace
from pathlib import Path

from .host import Host
from .mate import prepare_mate
from .session import wait_until

XFCE_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="{dark}"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/><value type="int" value="2"/><value type="int" value="3"/>
        <value type="int" value="4"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="clock">
      <property name="mode" type="uint" value="2"/>
      <property name="digital-layout" type="uint" value="3"/>
      <property name="digital-time-format" type="string" value="%a"/>
      <property name="digital-format" type="string" value="%a"/>
    </property>
    <property name="plugin-2" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-3" type="string" value="systray"/>
    <property name="plugin-4" type="string" value="separator">
      <property name="style" type="uint" value="0"/>
    </property>
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
spaceType=invisible
[statusnotifier]
type=statusnotifier
alignment=Right
[worldclock]
type=worldclock
alignment=Right
formatType=custom
customFormat="'<b>'ddd'</b>'"
"""

I3_CONFIG = """# i3 config file (v4)
font pango:DejaVu Sans 10
bindsym Mod4+Return exec true
bar {
  position top
}
"""

POLYBAR_CONFIG = """[bar/top]
width = 100%
height = 24
background = {ground}
foreground = {text}
modules-left = date
tray-position = right
font-0 = DejaVu Sans:size=10
[module/date]
type = internal/date
date = %a
"""

SWAY_CONFIG = """output X11-1 resolution {screen} scale {scale}
output X11-1 bg #336699 solid_color
exec env > {config}/session-environment
"""

WAYBAR_CONFIG = {
    "layer": "top",
    "position": "top",
    "height": 30,
    "modules-right": ["tray", "clock"],
    "tray": {"icon-size": 22, "spacing": 8},
    "clock": {"format": "{:%a}"},
}

WAYBAR_STYLE = """* { font-family: sans-serif; font-size: 13px; }
window#waybar { background-color: #2b303b; color: #ffffff; }
#clock, #tray { padding: 0 10px; }
"""

LIGHT_WAYBAR_STYLE = WAYBAR_STYLE.replace("#2b303b", "#f2f2f2").replace("#ffffff", "#222222")


def prepare_xfce(session, dark):
    panel = XFCE_PANEL.replace("{dark}", "true" if dark else "false")
    session.write("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", panel)
    xfconfd = next(Path("/usr/lib").glob("*/xfce4/xfconf/xfconfd"))
    session.start("xfconfd", str(xfconfd))
    session.start("window-manager", "xfwm4", "--compositor=off")


def prepare_lxqt(session, theme):
    session.write("lxqt/panel.conf", LXQT_PANEL)
    session.write("lxqt/lxqt.conf", f"[General]\ntheme={theme}\nicon_theme=Adwaita\n")
    session.start_window_manager()


def on_openbox(**files):
    """Prepares a bar that needs nothing but a window manager."""

    def prepare(session):
        for name, text in files.items():
            session.write(name, text)
        session.start_window_manager()

    return prepare


def polybar_config(ground, text):
    return POLYBAR_CONFIG.replace("{ground}", ground).replace("{text}", text)


def prepare_tint2(session, light=False):
    config = Path("/etc/xdg/tint2/tint2rc").read_text()
    config = config.replace("time1_format = %H:%M", "time1_format = %a")
    if light:
        # The first colours are the bar's.
        config = config.replace("_color = #000000 60", "_color = #f2f2f2 100", 1)
        config = config.replace("clock_font_color = #ffffff", "clock_font_color = #222222")
    session.write("tint2/tint2rc", config)
    session.start_window_manager()


def restart_i3(_, session, bar):
    session.run("i3-msg", "restart")
    return bar


def on_sway(scale, style=WAYBAR_STYLE):
    """Prepares a compositor with so many pixels a point."""
    return lambda session: prepare_sway(session, scale, style=style)


def prepare_sway(session, scale, bar=None, style=WAYBAR_STYLE):
    """The same for a bar of one's own."""
    config = SWAY_CONFIG.format(config=session.config, screen=session.screen, scale=scale)
    session.write("sway/config", config)
    session.write("waybar.json", json.dumps(bar or WAYBAR_CONFIG))
    session.write("waybar.css", style)
    session.start(
        "compositor", "sway", WLR_BACKENDS="x11", WLR_RENDERER="pixman",
        WLR_LIBINPUT_NO_DEVICES="1", XDG_SESSION_TYPE="wayland",
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
                      "SWAYSOCK": found["SWAYSOCK"], "WAYLAND_DISPLAY": found["WAYLAND_DISPLAY"]}


def trayer(tint):
    return ("trayer", "--edge", "top", "--align", "right", "--widthtype", "request",
            "--height", "24", "--tint", tint, "--alpha", "0", "--transparent", "true")


# Such bars tell nobody that they are light.
TOLD_LIGHT = {"barTone": "light"}
WAYBAR = Host(
    "sway", 30, on_sway(1),
    ("waybar", "-c", "{config}/waybar.json", "-s", "{config}/waybar.css"),
    layered=True, ordinary_user=True,
)
XFCE = Host("XFCE", 28, lambda session: prepare_xfce(session, False), ("xfce4-panel",),
            expects="short text")
LXQT = Host("LXQt", 32, lambda session: prepare_lxqt(session, "debian"), ("lxqt-panel",),
            at_bottom=True, expects="short text")
MATE = Host("MATE", 28, lambda session: prepare_mate(session, "Adwaita"), ("mate-panel",))
TINT2 = Host("", 30, prepare_tint2, ("tint2",), at_bottom=True, expects="short text")
POLYBAR = Host("", 24, on_openbox(**{"polybar.ini": polybar_config("#222222", "#dfdfdf")}),
               ("polybar", "-c", "{config}/polybar.ini", "top"), expects="short text")
TRAYER = Host("", 24, on_openbox(), trayer("0x222222"), stands_alone=False)

BARS = {
    "xfce": XFCE,
    "xfce-dark": replace(XFCE, prepare=lambda session: prepare_xfce(session, True)),
    "lxqt": LXQT,
    "lxqt-light": replace(LXQT, prepare=lambda session: prepare_lxqt(session, "light")),
    "mate": MATE,
    "mate-dark": replace(MATE, prepare=lambda session: prepare_mate(session, "Adwaita-dark")),
    "waybar": WAYBAR,
    "waybar-light": replace(WAYBAR, prepare=on_sway(1, LIGHT_WAYBAR_STYLE),
                            preferences=TOLD_LIGHT),
    "waybar-1.5": replace(WAYBAR, thickness=45, scale=1.5, prepare=on_sway(1.5)),
    "waybar-2": replace(WAYBAR, thickness=60, scale=2, prepare=on_sway(2)),
    "i3": Host("i3", 22, lambda session: session.write("i3/config", I3_CONFIG), ("i3",),
               expects="short text", restart=restart_i3),
    "tint2": TINT2,
    "tint2-light": replace(TINT2, prepare=lambda session: prepare_tint2(session, True),
                           preferences=TOLD_LIGHT),
    "polybar": POLYBAR,
    "polybar-light": replace(
        POLYBAR, prepare=on_openbox(**{"polybar.ini": polybar_config("#f2f2f2", "#222222")}),
        preferences=TOLD_LIGHT),
    "trayer": TRAYER,
    "trayer-light": replace(TRAYER, command=trayer("0xf2f2f2"), preferences=TOLD_LIGHT),
}
