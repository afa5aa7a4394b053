"""Whole desktops, which take longer to start."""
SHELLS = {}
