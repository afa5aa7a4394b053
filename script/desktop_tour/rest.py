"""A screen that has come to rest."""
import time

from .pictures import Picture
from .session import wait_until


def settled(session, times=1, patience=20):
    """A picture of a screen that has been the same for so many times 0.4 s, and whether it came to
    that within the patience, in seconds."""
    def picture():
        one = Picture.of_screen(session)
        for _ in range(times):
            time.sleep(0.4)
            other = Picture.of_screen(session)
            if one.pixels != other.pixels:
                return None
        return other

    found = wait_until(picture, patience)
    return found or Picture.of_screen(session), bool(found)
