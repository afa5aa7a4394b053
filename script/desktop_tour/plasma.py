"""What is on Plasma's bar: a menu at its left end, and a status area with nothing of its own."""

ACTIVITY = "0c7d1f4e-5a0b-4a7e-9d4e-2f1f6f2f3a10"
ACTIVITIES = f"[activities]\n{ACTIVITY}=Default\n\n[main]\ncurrentActivity={ACTIVITY}\n"

PLASMA_CONFIG = f"""[Containments][1]
activityId={ACTIVITY}
formfactor=0
immutability=1
lastScreen=0
location=0
plugin=org.kde.desktopcontainment
wallpaperplugin=org.kde.color

[Containments][1][Wallpaper][org.kde.color][General]
Color=51,102,153

[Containments][2]
activityId=
formfactor=2
immutability=1
lastScreen=0
location=4
plugin=org.kde.panel
wallpaperplugin=org.kde.image

[Containments][2][Applets][3]
immutability=1
plugin=org.kde.plasma.kickoff

[Containments][2][Applets][4]
immutability=1
plugin=org.kde.plasma.panelspacer

[Containments][2][Applets][5]
immutability=1
plugin=org.kde.plasma.systemtray

[Containments][2][Applets][5][Configuration]
PreloadWeight=50
SystrayContainmentId=6

[Containments][2][General]
AppletOrder=3;4;5

[Containments][6]
activityId=
formfactor=2
immutability=1
lastScreen=0
location=4
plugin=org.kde.plasma.private.systemtray
wallpaperplugin=org.kde.image

[Containments][6][General]
extraItems=
knownItems=org.kde.plasma.battery,org.kde.plasma.bluetooth,org.kde.plasma.brightness,\
org.kde.plasma.cameraindicator,org.kde.plasma.clipboard,org.kde.plasma.devicenotifier,\
org.kde.plasma.keyboardindicator,org.kde.plasma.keyboardlayout,org.kde.plasma.manage-inputmethod,\
org.kde.plasma.mediacontroller,org.kde.plasma.networkmanagement,org.kde.plasma.nightcolorcontrol,\
org.kde.plasma.notifications,org.kde.plasma.printmanager,org.kde.plasma.volume,\
org.kde.kscreen,org.kde.plasma.vault,org.kde.plasma.weather
"""
