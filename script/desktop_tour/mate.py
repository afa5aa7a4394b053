"""MATE's bar, with its notification area or, in its place, its indicators."""
from pathlib import Path

PANEL = (Path(__file__).resolve().parent.parent / "mate-panel.keyfile").read_text()

# It does not move.
CLOCK = """
[org/mate/panel/objects/clock/prefs]
format='custom'
custom-format='%a'
show-weather=false
show-temperature=false
"""

WITH_STATUS_AREA = PANEL + CLOCK
WITH_INDICATORS = PANEL.replace("'clock',", "").replace(
    "NotificationAreaAppletFactory::NotificationArea", "IndicatorAppletFactory::IndicatorApplet")


def prepare_mate(session, theme, panel=WITH_STATUS_AREA):
    session.write("glib-2.0/settings/keyfile", panel)
    session.use_theme(theme)
    session.start_window_manager()
