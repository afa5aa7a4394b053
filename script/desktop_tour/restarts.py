"""What is left of the label when bar and program end and are started again."""
from .pictures import Picture, ink
from .session import wait_until

PATIENCE = 30  # seconds


class Restarts:
    """In one bar; `counts` has how often the label was back, by what had happened."""

    def __init__(self, session, host, program, bar):
        self.session, self.host, self.program, self.bar = session, host, program, bar
        self.counts = {}

    def run(self, times, item, width):
        self.item, self.width = item, width
        ways = {}
        if self.host.restart:
            ways["after the bar's restart"] = self.restart_bar
        ways["after the program's"] = self.restart_program
        if self.host.comes_later:
            ways["where the bar came second"] = self.start_bar_second
        for way, back in ways.items():
            self.counts[way] = sum(back() for _ in range(times))

    def is_shown(self):
        # Meanwhile a figure may have lost a digit.
        marks = ink(Picture.of_screen(self.session), self.item)
        return bool(marks) and 2 * (marks[2] - marks[0]) > self.width

    def is_back(self):
        return bool(wait_until(self.is_shown, PATIENCE))

    def end_program(self):
        """Whether the label has gone with it: what is left may be something else."""
        self.program.end()
        return bool(wait_until(lambda: not self.is_shown(), PATIENCE))

    def restart_bar(self):
        self.bar = self.host.restart(self.host, self.session, self.bar)
        return self.is_back()

    def restart_program(self):
        gone = self.end_program()
        self.program.start()
        return self.is_back() and gone

    def start_bar_second(self):
        gone = self.end_program()
        self.session.end(self.bar)
        self.program.start()
        ready = wait_until(self.program.is_ready, PATIENCE)
        self.bar = self.host.start(self.host, self.session)
        return bool(ready) and self.is_back() and gone
