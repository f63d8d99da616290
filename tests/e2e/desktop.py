"""A private desktop for end-to-end tests of the real window.

One Desktop per test process: a virtual display (Xvfb), a session bus, the accessibility
bus, and the program started on them with the accessibility bridge on. The user's own
settings, data and runtime folders are never touched: each Desktop has folders of its own.

The tests drive the window as a user does (xdotool keys and clicks) and read it as a
screen reader does (pyatspi: names, roles, texts, enabled and checked states).
Needs the system Python (/usr/bin/python3), where python3-pyatspi is installed.
"""

import configparser
import os
import random
import shutil
import signal
import subprocess
import tempfile
import time


class TestFailure(Exception):
    pass


def check(condition, message):
    if not condition:
        raise TestFailure(message)


def wait_for(what, probe, timeout=60.0, interval=0.05):
    """Calls probe until it returns something true; fails after `timeout` seconds."""
    deadline = time.monotonic() + timeout
    while True:
        value = probe()
        if value:
            return value
        if time.monotonic() > deadline:
            raise TestFailure("timed out waiting for " + what)
        time.sleep(interval)


class Desktop:
    def __init__(self, size="1280x900"):
        self.folder = tempfile.mkdtemp(prefix="backplot-e2e-")
        self.processes = []
        self.app = None
        env = dict(os.environ)
        for name in ("config", "data", "cache", "runtime"):
            path = os.path.join(self.folder, name)
            os.makedirs(path, mode=0o700)
            env["XDG_%s_HOME" % name.upper() if name != "runtime" else "XDG_RUNTIME_DIR"] = path
        env.pop("SESSION_MANAGER", None)

        env["DISPLAY"] = self._start_display(size, env)

        bus = subprocess.run(["dbus-daemon", "--session", "--fork", "--print-address=1", "--print-pid=1"],
                             env=env, capture_output=True, text=True, check=True).stdout.split()
        env["DBUS_SESSION_BUS_ADDRESS"] = bus[0]
        self.bus_pid = int(bus[1])
        self.processes.append(subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"],
                                               env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        env["QT_ACCESSIBILITY"] = "1"
        env["QT_QPA_PLATFORM"] = "xcb"
        env["NO_AT_BRIDGE"] = "0"
        self.env = env
        # pyatspi finds the accessibility bus through the session bus of this process.
        os.environ.update({k: env[k] for k in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR")})

    def _start_display(self, size, env):
        # A display number of our own, far from the usual ones: a number just given up by
        # an earlier server may not be usable again at once.
        for attempt in range(20):
            number = random.randint(100, 30000)
            if os.path.exists("/tmp/.X%d-lock" % number) or os.path.exists("/tmp/.X11-unix/X%d" % number):
                continue
            display = ":%d" % number
            xvfb = subprocess.Popen(["Xvfb", display, "-screen", "0", size + "x24", "-nolisten", "tcp"],
                                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            probe = dict(env, DISPLAY=display)
            deadline = time.monotonic() + 10
            while xvfb.poll() is None and time.monotonic() < deadline:
                if subprocess.run(["xdotool", "getdisplaygeometry"], env=probe, capture_output=True).returncode == 0:
                    self.processes.append(xvfb)
                    return display
                time.sleep(0.05)
            if xvfb.poll() is None:
                xvfb.kill()
            xvfb.wait()
        raise TestFailure("no virtual display could be started")

    # ---- settings and files ----

    def settings_file(self):
        return os.path.join(self.env["XDG_CONFIG_HOME"], "Corvane Software Development Inc.", "TKZBackplot.ini")

    def store_settings(self, **values):
        """Values of the "Settings" group, written before the program starts."""
        path = self.settings_file()
        os.makedirs(os.path.dirname(path), exist_ok=True)
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        if os.path.exists(path):
            parser.read(path)
        if not parser.has_section("Settings"):
            parser.add_section("Settings")
        for name, value in values.items():
            parser.set("Settings", name.replace("_", " "), str(value))
        with open(path, "w") as out:
            parser.write(out)

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w") as out:
            out.write(text)
        return path

    # ---- the program ----

    def start(self, program, *args):
        self.app = subprocess.Popen([program, *args], env=self.env, stdout=subprocess.DEVNULL,
                                    stderr=subprocess.PIPE)
        self.processes.append(self.app)
        return self.app

    # ---- the display, as a user sees it ----

    def xdotool(self, *args, timeout=20):
        result = subprocess.run(["xdotool", *args], env=self.env, capture_output=True, text=True, timeout=timeout)
        return result.stdout.strip()

    def window(self, title, timeout=60):
        """The visible top-level window whose title is exactly `title` (as the platform has it)."""
        pattern = "^" + "".join("\\" + c if c in ".^$*+?()[]{}|\\" else c for c in title) + "$"
        found = wait_for("a window titled " + repr(title),
                         lambda: self.xdotool("search", "--onlyvisible", "--name", pattern), timeout)
        return found.split()[0]

    def window_names(self):
        ids = self.xdotool("search", "--onlyvisible", "--name", ".").split()
        return sorted(self.xdotool("getwindowname", i) for i in ids)

    # Keys go through the server's test extension to the focused window, as typed keys
    # do; events sent to a window directly reach Qt twice over (press, then again on the
    # next window to take the focus). There is no window manager: the tests give the focus.
    def key(self, window, *keys):
        self.xdotool("windowfocus", "--sync", window)
        self.xdotool("key", "--clearmodifiers", *keys)

    def type(self, window, text):
        self.xdotool("windowfocus", "--sync", window)
        self.xdotool("type", "--delay", "20", text)

    def screenshot(self, path):
        subprocess.run(["import", "-window", "root", path], env=self.env, check=False)

    # ---- the accessibility tree, as a screen reader reads it ----

    def accessible_app(self, name="TKZBackplot", timeout=60):
        import pyatspi

        def find():
            desktop = pyatspi.Registry.getDesktop(0)
            for i in range(desktop.childCount):
                child = desktop.getChildAtIndex(i)
                if child is not None and child.name == name:
                    return child
            return None
        return wait_for("the program on the accessibility bus", find, timeout)

    def close(self):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(timeout=5)
                except subprocess.TimeoutExpired:
                    process.kill()
        try:
            os.kill(self.bus_pid, signal.SIGTERM)
        except (OSError, AttributeError):
            pass
        shutil.rmtree(self.folder, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()
        return False


def set_field(app, text, timeout=60.0):
    """Puts `text` into the editable text field that has the keyboard focus, through the
    accessibility bus, and waits until the field reads it back."""
    import pyatspi

    def field():
        found = find_all(app, lambda n: n.getRole() == pyatspi.ROLE_TEXT and
                         n.getState().contains(pyatspi.STATE_FOCUSED))
        return found[0] if found else None
    node = wait_for("a focused text field", field, timeout)
    node.queryEditableText().setTextContents(text)
    wait_for("the field to read " + repr(text),
             lambda: node.queryText().getText(0, -1) == text, timeout)
    return node


def find_all(accessible, predicate):
    """Every descendant (depth first) for which predicate holds."""
    found = []
    stack = [accessible]
    while stack:
        node = stack.pop()
        if node is None:
            continue
        try:
            if predicate(node):
                found.append(node)
            stack.extend(node.getChildAtIndex(i) for i in reversed(range(node.childCount)))
        except Exception:
            continue
    return found
