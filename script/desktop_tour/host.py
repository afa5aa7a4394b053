"""What is known of a bar: how it is started, and where it is on the screen."""
from dataclasses import dataclass, field
from typing import Callable


def start_command(host, session):
    words = (part.format(config=session.config) for part in host.command)
    return session.start("bar", *words, **session.inside)


def end_and_start(host, session, bar):
    session.end(bar)
    return host.start(host, session)


@dataclass(frozen=True)
class Host:
    """A bar."""

    desktop: str  # as in XDG_CURRENT_DESKTOP
    thickness: int  # of the bar, in pixels
    prepare: Callable  # makes, in a session, what the bar needs: files, a window manager
    command: tuple = ()  # the bar itself; {config} is the folder of the session's configuration
    start: Callable = start_command  # starts it, given host and session; its process
    at_bottom: bool = False
    covered: int = 0  # how many of its pixels the panel may be over
    preferences: dict = field(default_factory=dict)  # of the program's
    expects: str = "text"  # what is seen: "text" or "short text"
    stands_alone: bool = True  # whether there is anything of it before it has an item
    scale: float = 1  # pixels a point
    layered: bool = False  # whether the panel is in front of all windows until it is closed
    ordinary_user: bool = False  # some refuse root
    press: tuple = ("click", "1")  # what opens the panel, in xdotool's words
    closes: tuple | None = None  # what closes it; None: the same
    has_menu: bool = False  # whether a press opens that, and a middle click the panel
    has_clock: bool = False  # whether one moves in the bar
    patience: int = 2  # how often the screen is the same, 0.4 s apart, before it is at rest
    # Restarts it, given the host, the session and the bar's process, and returns the new one; None
    # for a bar that cannot be restarted by itself.
    restart: Callable | None = end_and_start
    comes_later: bool = True  # whether it can end and start while the program runs

    @property
    def screen(self):
        """The size of the screen, in pixels."""
        return int(1280 * self.scale), int(800 * self.scale)
