"""A private desktop: an X server, a session bus and a home folder that end with it."""
import os
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

PATIENCE = 60  # seconds; only what fails waits so long
GROUND = "#336699"  # the empty desktop's colour: panels and their shadows are told from it
FONT = "DejaVu Sans 10"  # as desktops have: with the toolkits' own 9 points the panel is narrower
NOBODY = 65534  # sway and some shells refuse root


def wait_until(condition, patience=PATIENCE):
    """The condition's first true value; None when the patience is over."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        if value := condition():
            return value
        time.sleep(0.1)
    return None


class Session:
    """Used with "with"; programs started in it end with it, the latest first."""

    def __init__(self, desktop, log_folder, screen="1280x800"):
        self.folder = Path(tempfile.mkdtemp(prefix="desktop-"))
        self.log_folder = log_folder
        self.screen = screen  # its size in pixels
        self.processes = []
        self.ordinary_user = False
        self.shared_settings = {"Gtk/FontName": f'"{FONT}"', "Xft/DPI": str(96 * 1024)}
        self.inside = {}  # what programs of the desktop find otherwise than the desktop itself
        log_folder.mkdir(parents=True, exist_ok=True)
        home = self.folder / "home"
        run = self.folder / "run"
        (home / ".config").mkdir(parents=True)
        run.mkdir(mode=0o700)
        keep = ("PATH", "LD_LIBRARY_PATH", "FONTCONFIG_FILE")
        self.environment = {name: os.environ[name] for name in keep if name in os.environ}
        self.environment |= {
            "HOME": str(home),
            "XDG_CONFIG_HOME": str(home / ".config"),
            "XDG_RUNTIME_DIR": str(run),
            "XDG_SESSION_TYPE": "x11",
            "LC_ALL": "C.UTF-8",
            "NO_AT_BRIDGE": "1",
            "GIO_USE_VFS": "local",
            "GSETTINGS_BACKEND": "keyfile",
            "LIBGL_ALWAYS_SOFTWARE": "1",
            "DISPLAY": self.start_x_server(),
        }
        self.run("hsetroot", "-solid", GROUND)
        if desktop:
            self.environment["XDG_CURRENT_DESKTOP"] = desktop

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            self.end(process)
        shutil.rmtree(self.folder, ignore_errors=True)

    @property
    def config(self):
        return Path(self.environment["XDG_CONFIG_HOME"])

    def write(self, name, text):
        """A file below the configuration folder."""
        path = self.config / name
        path.parent.mkdir(parents=True, exist_ok=True)
        # Whoever follows it never finds half of it.
        new = path.with_name(f"{path.name}.new")
        new.write_text(text)
        if self.ordinary_user:
            for own in (path.parent, new):
                os.chown(own, NOBODY, NOBODY)
        new.replace(path)

    def use_theme(self, name):
        """Has programs with windows take the toolkit's light or dark colours, by its name."""
        # The toolkit has a dark theme of its own, but no name for it.
        dark = self.folder / "home/.local/share/themes/Adwaita-dark/gtk-3.0"
        dark.mkdir(parents=True, exist_ok=True)
        sheet = "resource:///org/gtk/libgtk/theme/Adwaita/gtk-contained-dark.css"
        (dark / "gtk.css").write_text(f'@import url("{sheet}");\n')
        self.shared_settings["Net/ThemeName"] = f'"{name}"'

    def share_settings(self):
        """Tells all programs on the X server what the desktop is set to."""
        lines = (f"{name} {value}\n" for name, value in self.shared_settings.items())
        self.write("xsettings", "".join(lines))
        self.start("settings", "xsettingsd", "-c", str(self.config / "xsettings"))

    def copy_program(self, program):
        """A copy that others than who built it may read, with what it loads; its path."""
        tree = program.parent.parent
        for part in ("bin", "lib"):
            shutil.copytree(tree / part, self.folder / part)
        return self.folder / "bin" / program.name

    def become_ordinary_user(self):
        """What is started from now on belongs to nobody, and so does the home."""
        self.ordinary_user = os.geteuid() == 0
        self.own()

    def own(self):
        """Hands what has been written to the user whose session it is."""
        if self.ordinary_user:
            for path in [self.folder, *self.folder.rglob("*")]:
                os.chown(path, NOBODY, NOBODY)

    def command(self, arguments):
        if not self.ordinary_user:
            return list(arguments)
        user = [f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]
        return ["setpriv", *user, "--inh-caps=-all", *arguments]

    def start(self, name, *arguments, **environment):
        log = (self.log_folder / f"{name}.log").open("ab")
        process = subprocess.Popen(
            self.command(arguments),
            env=self.environment | environment,
            stdin=subprocess.DEVNULL,
            stdout=log,
            stderr=log,
            cwd=self.environment["HOME"],
            start_new_session=True,
        )
        self.processes.append(process)
        return process

    def run(self, *arguments):
        """Runs a program to its end; what it says."""
        return subprocess.run(
            self.command(arguments), env=self.environment, capture_output=True, timeout=PATIENCE,
            text=True,
        ).stdout

    def end(self, process):
        """Ends a program and all that it has started."""
        for sent in (signal.SIGTERM, signal.SIGKILL):
            try:
                os.killpg(process.pid, sent)
            except ProcessLookupError:
                pass
            if wait_until(lambda: process.poll() is not None, 5):
                break
        if process in self.processes:
            self.processes.remove(process)

    def start_x_server(self):
        reader, writer = os.pipe()
        log = (self.log_folder / "x-server.log").open("ab")
        server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{self.screen}x24", "-noreset"],
            pass_fds=[writer],
            stdout=log,
            stderr=log,
            start_new_session=True,
        )
        self.processes.append(server)
        os.close(writer)
        with os.fdopen(reader) as answer:
            return ":" + answer.readline().strip()

    def start_window_manager(self):
        """Starts one for bars that bring none. What is mapped before it listens may never be seen."""
        self.start("window-manager", "openbox")

        def obeys():
            self.run("xdotool", "set_num_desktops", "1")
            return self.run("xdotool", "get_num_desktops").strip() == "1"

        if not wait_until(obeys):
            raise RuntimeError("the window manager did not start")

    def start_bus(self):
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.start_bus_called("bus")

    def start_system_bus(self):
        """A bus of the system's kind, with somebody who keeps sessions."""
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = self.start_bus_called("system-bus")
        self.start("sessions", "/usr/bin/python3", "-m", "dbusmock", "--system",
                   "--template", "logind")

    def start_bus_called(self, name):
        """Starts a message bus; its address."""
        path = Path(self.environment["XDG_RUNTIME_DIR"]) / name
        address = f"unix:path={path}"
        self.start(name, "dbus-daemon", "--session", "--nofork", "--nopidfile",
                   f"--address={address}")
        if not wait_until(path.exists):
            raise RuntimeError(f"the {name} did not start")
        return address

    def store_token(self, token):
        """Has a keyring, unlocked, with the token of the program in it."""
        (self.folder / "home/.local/share/keyrings").mkdir(parents=True)
        self.own()
        daemon = ("gnome-keyring-daemon", "--components=secrets", "--control-directory",
                  f"{self.environment['XDG_RUNTIME_DIR']}/keyring")
        self.start("keyring", "sh", "-c", 'echo password | "$@" --foreground --unlock', "sh", *daemon)
        # Whoever asks for it earlier has the bus start another one, which asks for a password.
        is_owned = ("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                    "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner",
                    "org.freedesktop.secrets")
        wait_until(lambda: "true" in self.run(*is_owned))
        item = ("service", "com.lumora.app", "account", "briefingToken")
        store = 'printf %s "$0" | secret-tool store --label=Lumora "$@" && echo stored'
        if not wait_until(lambda: self.run("sh", "-c", store, token, *item)):
            raise RuntimeError("the keyring did not start")
