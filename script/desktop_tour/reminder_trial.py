"""What is tried with each notification server, and measured."""
import json
import shutil
import time
from pathlib import Path

from .pictures import Picture, difference, ink
from .rest import settled
from .service import MeetingService, iso
from .session import Session, wait_until

LEAD = 300  # seconds between a reminder and its meeting
FETCH = 6  # seconds for the program to be told of a meeting in time
COMES = FETCH + 30  # seconds within which a reminder has come, or does not
FAINT = 10  # of 255: what is no more than the edge of a shadow takes off a colour
LEAST_BUTTON = 16  # pixels: the width of what is written on one, and the height of its row
ICON = Path(__file__).resolve().parents[2] / "data/icons/com.lumora.app.svg"
BROWSER = '#!/bin/sh\nprintf "%s\\n" "$*" >>"${0%/*}/opened"\n'


class RemindingService(MeetingService):
    """Its one meeting is to be reminded of in some seconds, and may have a link."""

    def __init__(self):
        super().__init__()
        self.start = time.time() + 3600
        self.link = None

    def briefing(self):
        briefing = json.loads(super().briefing())
        meeting = {"title": self.title, "start": iso(self.start), "end": iso(self.start + 1800),
                   "allDay": False, "location": "Room 4"}
        if self.link:
            meeting["meetingUrl"] = self.link
        briefing["eventsToday"] = [meeting]
        return json.dumps(briefing).encode()


class ReminderTrial:
    """One server's: `facts` and `faults` are what was found, once it has run."""

    def __init__(self, name, server, lumora, folder, unseen):
        self.name, self.server, self.lumora, self.folder = name, server, lumora, folder
        self.unseen = unseen  # seconds for which nobody touches a reminder
        self.faults = []
        self.facts = {}
        self.count = 0

    def expect(self, holds, fault):
        if not holds:
            self.faults.append(fault)
        return bool(holds)

    def run(self):
        self.service = RemindingService()
        with Session(self.server.desktop, self.folder / "log" / self.name) as self.session:
            self.set_up()
            self.server.start(self.session)
            if self.expect(wait_until(self.server_is_there), "the server does not start"):
                self.start_program()
                self.try_all()
        self.service.stop()

    def set_up(self):
        session = self.session
        if self.server.ordinary_user:
            self.lumora = session.copy_program(self.lumora)
        browser = session.folder / "browser"
        browser.mkdir()
        (browser / "xdg-open").write_text(BROWSER)
        (browser / "xdg-open").chmod(0o755)
        self.opened_file = browser / "opened"
        session.environment |= {"QT_QPA_PLATFORMTHEME": "",
                                "PATH": f"{browser}:{session.environment['PATH']}"}
        icons = session.folder / "home/.local/share/icons/hicolor/scalable/apps"
        icons.mkdir(parents=True)
        shutil.copy(ICON, icons)
        session.write("lumora/lumora.conf", "[General]\ntoldOfNoStatusArea=true\n"
                      f"endpointURL={self.service.endpoint}\n")
        if self.server.ordinary_user:
            session.become_ordinary_user()
        session.start_bus()
        session.store_token("a token")

    def server_is_there(self):
        return "true" in self.session.run(
            "gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/",
            "--method", "org.freedesktop.DBus.NameHasOwner", "org.freedesktop.Notifications")

    def start_program(self):
        self.session.start("lumora", str(self.lumora), **self.session.inside)
        self.expect(wait_until(self.is_up), "the program does not start")
        self.park()
        self.settled()

    def is_up(self):
        return self.session.run(str(self.lumora), "status", "--format", "json").strip()

    # On the screen

    def picture(self):
        return Picture.of_screen(self.session)

    def settled(self):
        """A picture of a screen that does not change any more, or not for longer than it may."""
        return settled(self.session, 2, 8)[0]

    def rows(self, picture):
        half = picture.height // 2
        edge = self.server.bar
        return range(half, picture.height - edge) if self.server.at_bottom else range(edge, half)

    def shown(self, before):
        """The rectangle of what came since, if it is as large as a notification."""
        found = difference(before, picture := self.picture(), self.rows(picture), FAINT)
        return found if found and found[2] - found[0] > 120 and found[3] - found[1] > 30 else None

    def save(self, what):
        picture = self.picture()
        rows = self.rows(picture)
        picture.save(self.folder / f"{self.name}-{what}.png",
                     (0, rows.start, picture.width, rows.stop))

    def move(self, x, y):
        self.session.run("xdotool", "mousemove", str(x - 1), str(y), "mousemove", str(x), str(y))

    def park(self):
        """Takes the pointer to the half of the screen that is not looked at."""
        self.move(20, 200 if self.server.at_bottom else 600)

    def click(self, place, button="1"):
        self.move(*place)
        time.sleep(0.5)
        self.session.run("xdotool", "click", button)

    # Reminders

    def announce(self, link):
        """Has the program be told of another meeting; its link, where it has one."""
        self.count += 1
        self.service.title = f"Planning {self.count}"
        self.service.link = f"https://meet.example.com/{self.count}" if link else None
        self.service.start = int(time.time()) + LEAD + FETCH
        self.session.run(str(self.lumora), "refresh")
        return self.service.link

    def remind(self, link=True):
        """Has a reminder come; its link, the screen before it, and its rectangle."""
        before = self.settled()
        wanted = self.announce(link)
        if not self.expect(wait_until(lambda: self.shown(before), COMES), "no reminder is shown"):
            self.save("missing")
            return None
        self.settled()
        return wanted, before, self.shown(before)

    def opened(self):
        return self.opened_file.read_text().splitlines() if self.opened_file.exists() else []

    def opens(self, link, before, what, wait=10):
        """Whether this link, and none but it, has been opened; and the reminder is gone."""
        done = wait_until(lambda: self.opened() == [link], wait)
        self.opened_file.unlink(missing_ok=True)
        self.gone(before, what)
        return done

    def gone(self, before, what):
        self.park()
        self.expect(wait_until(lambda: not self.shown(before), 15), f"{what} does not close it")

    @staticmethod
    def body(rectangle):
        """A place on its text."""
        left, top, right, bottom = rectangle
        return left + (right - left) * 2 // 5, top + min(45, (bottom - top) // 2)

    # What is tried

    def try_all(self):
        plain = self.try_unseen()
        if plain is None:
            return
        self.try_body()
        if self.server.has_button:
            self.try_button(plain)
        if self.server.opens_too:
            self.try_other_button()
        self.try_quiet()

    def try_unseen(self):
        """A reminder without a link stays, and a click on it opens nothing. Its height, with the
        pointer over it where that is what shows buttons."""
        if not (came := self.remind(link=False)):
            return None
        _, before, rectangle = came
        self.save("unseen")
        time.sleep(self.unseen)
        still = self.shown(before)
        self.facts["untouched"] = f"there after {self.unseen} s" if still else "gone"
        if not self.expect(still, f"gone within {self.unseen} s, untouched"):
            return None
        height = self.height(before, rectangle)
        self.click(self.body(rectangle))
        self.gone(before, "a click on the body")
        self.expect(not self.opened(), "something was opened without a link")
        return height

    def height(self, before, rectangle):
        if self.server.hover:
            self.move(*self.body(rectangle))
            self.settled()
            rectangle = self.shown(before) or rectangle
        return rectangle[3] - rectangle[1]

    def try_body(self):
        if came := self.remind():
            link, before, rectangle = came
            self.click(self.body(rectangle))
            what = "a click on the body"
            opened = self.opens(link, before, what, wait=10 if self.server.body_opens else 2)
            self.facts[what] = "opens" if opened else "closes"
            self.expect(bool(opened) == self.server.body_opens,
                        f"{what} opens the link" if opened else f"{what} does not open the link")

    def try_button(self, plain):
        """The button is in what a reminder with a link has below one without."""
        if not (came := self.remind()):
            return
        link, before, rectangle = came
        height = self.height(before, rectangle)
        left, _, right, bottom = self.shown(before) or rectangle
        row = height - plain
        self.save("button")
        words = ink(self.picture(), (left, bottom - row, right, bottom)) if row > 0 else None
        visible = row >= LEAST_BUTTON and words and words[2] - words[0] >= LEAST_BUTTON
        if not self.expect(visible, "no button is to be seen"):
            self.click(self.body(rectangle))
            self.gone(before, "a click on the body")
            return
        self.click(((words[0] + words[2]) // 2, (words[1] + words[3]) // 2))
        opened = self.opens(link, before, "the button")
        self.expect(opened, "the button does not open the link")
        self.facts['"Join"'] = "opens" if opened else "does nothing"

    def try_other_button(self):
        if came := self.remind():
            link, before, rectangle = came
            self.click(self.body(rectangle), self.server.opens_too)
            what = f"mouse button {self.server.opens_too}"
            opened = self.opens(link, before, what)
            self.expect(opened, f"{what} does not open the link")
            self.facts[what] = "opens" if opened else "does nothing"

    def try_quiet(self):
        """While nobody is to be disturbed nothing is shown; after that, there are reminders."""
        before = self.settled()
        self.server.quiet(self.session, True)
        time.sleep(1)
        self.announce(link=True)
        disturbed = wait_until(lambda: self.shown(before), FETCH + 4)
        held = self.expect(not disturbed, "do-not-disturb does not hold")
        self.facts["do not disturb"] = "holds" if held else "does not hold"
        self.expect(self.is_up(), "the program has not outlived do-not-disturb")
        self.server.quiet(self.session, False)
        time.sleep(1)
        self.announce(link=True)
        self.expect(wait_until(lambda: self.shown(before), COMES),
                    "no reminder after do-not-disturb")
        self.expect(not self.opened(), "something was opened untouched")
