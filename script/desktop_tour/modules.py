"""The bars that follow the label with a command: how each is set up, and where it is."""
from dataclasses import dataclass
from typing import Callable

from .bars import prepare_sway

FONT = "DejaVu Sans Mono"  # all of its characters are equally wide
GROUND = (34, 34, 34)
STALE = (255, 85, 85)  # in the bar whose style goes by what is shown

WAYBAR = {
    "layer": "top",
    "position": "top",
    "height": 24,
    "modules-right": ["custom/lumora"],
    "custom/lumora": {
        "exec": "lumora status --follow --format waybar",
        "return-type": "json",
        "on-click": "lumora toggle",
    },
}

WAYBAR_STYLE = f"""* {{ font-family: {FONT}; font-size: 14px; }}
window#waybar {{ background-color: #222222; color: #dfdfdf; }}
tooltip {{ opacity: 0; }}
#custom-lumora {{ padding: 0 10px; }}
#custom-lumora.stale {{ color: #ff5555; }}
"""

POLYBAR = f"""[bar/top]
width = 100%
height = 24
background = #222222
foreground = #dfdfdf
modules-left = name
modules-right = lumora
font-0 = {FONT}:size=10
enable-ipc = false

[module/name]
type = internal/date
date = polybar

[module/lumora]
type = custom/script
exec = lumora status --follow --format polybar
tail = true
click-left = lumora toggle
format-padding = 2
"""

I3 = f"""# i3 config file (v4)
bar {{
  position top
  tray_output none
  workspace_buttons no
  font pango:{FONT} 10
  colors {{
    background #222222
    statusline #dfdfdf
  }}
  status_command i3blocks -c CONFIG/i3blocks.conf
}}
"""

I3BLOCKS = """[lumora]
command=lumora status --follow --format i3blocks
interval=persist
markup=pango
"""


@dataclass(frozen=True)
class ModuleHost:
    """A bar with the module that docs/INTERFACES.md has for it."""

    desktop: str  # as in XDG_CURRENT_DESKTOP
    start: Callable  # starts it in a session; its process
    thickness: int = 24  # of the bar, in pixels
    opens: bool = True  # whether a press on the label opens the panel
    styled: bool = False  # whether its style goes by what the label shows
    for_users: bool = False  # whether it refuses root


def start_waybar(session):
    prepare_sway(session, 1, WAYBAR, WAYBAR_STYLE)
    config = str(session.config)
    return session.start(
        "host", "waybar", "-c", f"{config}/waybar.json", "-s", f"{config}/waybar.css",
        **session.inside)


def start_polybar(session):
    session.write("polybar.ini", POLYBAR)
    session.start_window_manager()
    return session.start("host", "polybar", "-c", f"{session.config}/polybar.ini", "top")


def start_i3blocks(session):
    session.write("i3/config", I3.replace("CONFIG", str(session.config)))
    session.write("i3blocks.conf", I3BLOCKS)
    return session.start("host", "i3")


MODULE_HOSTS = {
    "waybar": ModuleHost("sway", start_waybar, styled=True, for_users=True),
    "polybar": ModuleHost("", start_polybar),
    "i3blocks": ModuleHost("i3", start_i3blocks, thickness=20, opens=False),
}
