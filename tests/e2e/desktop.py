"""A private desktop for end-to-end tests of the real window: a virtual display (Xvfb), a
session bus and the accessibility bus, with folders of its own (the user's are never
touched). The tests drive the window as a user does (xdotool) and read it as a screen reader
does (pyatspi, from the system Python); the readers they share are here too, with `Checks`,
which collects the faults of a user path so that one run reports all of them."""

import configparser
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unicodedata


class TestFailure(Exception):
    pass


def check(condition, message):
    if not condition:
        raise TestFailure(message)


class Checks:
    """Use `check` for what the next step needs, `expect` for what the user reads; `done`
    fails with every fault, so that a wrong status text does not hide a wrong toolbar."""

    def __init__(self):
        self.faults = []

    def expect(self, condition, message):
        if not condition:
            self.faults.append(message)
            print("FAULT: " + message, flush=True)
        return condition

    def equal(self, what, actual, expected):
        return self.expect(actual == expected, "%s: expected %r, got %r" % (what, expected, actual))

    def done(self):
        if self.faults:
            raise TestFailure("%d fault(s):\n  " % len(self.faults) + "\n  ".join(self.faults))


def run(case):
    """The end-to-end case `case(desktop, checks, program)` on a private desktop, with the
    program named on the command line; exits 0, or fails with every fault found."""
    checks = Checks()
    desktop = Desktop()
    try:
        case(desktop, checks, sys.argv[1])
    finally:
        desktop.close()
    checks.done()
    sys.exit(0)


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
            # -noreset: by default the server starts over whenever its last client leaves,
            # and refuses connections meanwhile; each xdotool call is such a client, so the
            # program's own connection could meet a server in the middle of a reset.
            xvfb = subprocess.Popen(["Xvfb", display, "-screen", "0", size + "x24", "-nolisten", "tcp",
                                     "-noreset"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
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
        open(path, "w").write(text)
        return path

    # ---- the program ----

    def start_shown(self, program):
        """Starts the program and waits for its main window on screen and on the accessibility
        bus: (the X window, the accessible application, its accessible main window)."""
        self.app = subprocess.Popen([program], env=self.env, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        self.processes.append(self.app)
        main_window = self.window("Tarvo Backplot")
        self.park_pointer()
        app = self.accessible_app()
        return main_window, app, top_window(app, "Tarvo Backplot")

    def open_program(self, window, app, frame, name, in_dialog=None, from_menu=False):
        """File > Open... by its key Ctrl+O (or through the File menu), `name` given in the
        dialog, which `in_dialog` may look at first; waits until the program is drawn (the
        toolbar's Step is on) or another window (a message box) is up."""
        if from_menu:
            open_menu(self, window, frame, "File", "alt+f")
            self.press("o")
        else:
            self.key(window, "ctrl+o")
        dialog = self.window("Open File")
        if in_dialog:
            in_dialog(dialog)
        set_field(app, name)
        self.key(dialog, "Return")
        self.wait_gone("Open File")
        wait_for("the program to be drawn", lambda: toolbar_state(frame)["Step"] or
                 set(self.window_names()) - {"Tarvo Backplot"})

    # ---- the display, as a user sees it ----

    def xdotool(self, *args):
        return subprocess.run(["xdotool", *args], env=self.env, capture_output=True, text=True,
                              timeout=20).stdout.strip()

    def window(self, title):
        """The visible top-level window whose title is exactly `title` (as the platform has it);
        fails at once, with what the program wrote to stderr, when it has ended."""
        pattern = "^" + "".join("\\" + c if c in ".^$*+?()[]{}|\\" else c for c in title) + "$"

        def probe():
            if self.app.poll() is not None:
                raise TestFailure("the program ended with status %d: %s" % (
                    self.app.returncode, self.app.stderr.read().decode(errors="replace").strip()))
            return self.xdotool("search", "--onlyvisible", "--name", pattern)
        return wait_for("a window titled " + repr(title), probe).split()[0]

    def window_names(self):
        ids = self.xdotool("search", "--onlyvisible", "--name", ".").split()
        return sorted(self.xdotool("getwindowname", i) for i in ids)

    def wait_gone(self, title):
        wait_for("the window " + repr(title) + " to close", lambda: title not in self.window_names())

    # Keys go through the server's test extension to the focused window, as typed keys
    # do; events sent to a window directly reach Qt twice over (press, then again on the
    # next window to take the focus). There is no window manager: the tests give the focus.
    def key(self, window, *keys):
        self.xdotool("windowfocus", "--sync", window)
        self.xdotool("key", "--clearmodifiers", *keys)

    # Without a window manager nobody gives the focus back to a window when a box over it
    # closes: the test does, as a user's click would.
    def focus(self, window):
        self.xdotool("windowfocus", "--sync", window)

    # Keys to whatever holds the keyboard now: an open menu or a message box over a dialog.
    # Giving the focus to a window first would close a menu.
    def press(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def move_pointer(self, x, y):
        self.xdotool("mousemove", "--sync", str(x), str(y))

    def click(self, x, y):
        self.move_pointer(x, y)
        self.xdotool("click", "1")

    # The pointer waits in the screen's far corner, off every window, so that no mouse
    # move over the canvas rewrites the status line behind a test's back.
    def park_pointer(self):
        width, height = self.xdotool("getdisplaygeometry").split()
        self.move_pointer(int(width) - 1, int(height) - 1)

    # ---- the accessibility tree, as a screen reader reads it ----

    def accessible_app(self):
        """The program on the accessibility bus; after a restart, the new process, not the
        one that has just ended."""
        import pyatspi

        def find():
            desktop = pyatspi.Registry.getDesktop(0)
            for i in range(desktop.childCount):
                child = desktop.getChildAtIndex(i)
                try:
                    if child is not None and child.name == "TKZBackplot" and child.get_process_id() == self.app.pid:
                        return child
                except Exception:
                    continue  # an application leaving the bus
            return None
        return wait_for("the program on the accessibility bus", find)

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


def set_field(app, text):
    """Puts `text` into the editable text field that has the keyboard focus, through the
    accessibility bus, and waits until the field reads it back."""
    import pyatspi

    def field():
        found = find_all(app, lambda n: n.getRole() == pyatspi.ROLE_TEXT and
                         n.getState().contains(pyatspi.STATE_FOCUSED))
        return found[0] if found else None
    node = wait_for("a focused text field", field)
    node.queryEditableText().setTextContents(text)
    wait_for("the field to read " + repr(text), lambda: node.queryText().getText(0, -1) == text)
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


# ---- reading the tree as a screen reader does ----

def has_state(name):
    """A reader of one state of a node, by its name in pyatspi ("ENABLED" for STATE_ENABLED)."""
    def read(node):
        import pyatspi
        return node.getState().contains(getattr(pyatspi, "STATE_" + name))
    return read


enabled, checked, showing, focused = (has_state(name) for name in ("ENABLED", "CHECKED", "SHOWING", "FOCUSED"))


def text_of(node):
    """The node's text through its Text interface, None when it has none."""
    try:
        return node.queryText().getText(0, -1)
    except NotImplementedError:
        return None


def heard(node):
    """Everything a screen reader can say of a node: its name, its text and its description
    (what it is when the name is the content). A status text must be one of them."""
    found = [node.name, node.description]
    text = text_of(node)
    if text is not None:
        found.append(text)
    return found


def wait_reading(node, pattern, timeout=5.0, unlike=()):
    """The match of `pattern` (a regular expression for the whole text) with what a screen
    reader hears from the node, once one matches; None when none has after `timeout`.
    Texts in `unlike` (what the node read before the change awaited) do not count."""
    expression = re.compile(pattern)

    def reading():
        return next((m for m in map(expression.fullmatch, heard(node)) if m and m.group(0) not in unlike), None)
    try:
        return wait_for("%r to read %s" % (node.name, pattern), reading, timeout)
    except TestFailure:
        return None


def find_one(root, predicate, what):
    """The first node (depth first) for which predicate holds, once there is one."""
    return wait_for(what, lambda: next(iter(find_all(root, predicate)), None))


def role_named(root, role, name):
    return find_one(root, lambda n: n.getRole() == role and n.name == name, "%s %r" % (role, name))


def children(node):
    return [child for child in (node.getChildAtIndex(i) for i in range(node.childCount)) if child is not None]


def top_windows(app, role=None):
    """The program's shown top-level windows (frames, dialogs, message boxes)."""
    return [w for w in children(app) if showing(w) and (role is None or w.getRole() == role)]


def top_window(app, title):
    """The accessible node of the shown top-level window with this title."""
    return wait_for("the window %r on the accessibility bus" % title,
                    lambda: next((w for w in top_windows(app) if w.name == title), None))


def press_button(node, name="Press"):
    """Runs a button's action (Press, or Toggle for a check box or a toggle button) through
    the accessibility bus. Only for buttons that open no modal window: the call would wait
    for that window to close."""
    action = node.queryAction()
    for i in range(action.nActions):
        if action.getName(i) == name:
            action.doAction(i)
            return
    raise TestFailure("%r has no %s action" % (node.name, name))


def extents(node):
    """x, y, width, height on the screen."""
    import pyatspi
    box = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return box.x, box.y, box.width, box.height


def toolbar_buttons(frame):
    """The main window's toolbar buttons by tool tip (the one text every button has to itself)."""
    import pyatspi
    bar = find_one(frame, lambda n: n.getRole() == pyatspi.ROLE_TOOL_BAR, "the toolbar")
    return {child.description: child for child in children(bar) if showing(child) and child.getRole() in (
        pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_TOGGLE_BUTTON)}


# The toolbar's buttons by key, with the tool tip that tells them apart.
TOOL_TIPS = {
    "Exit": "Exit Program", "Open": "Open File to Plot", "Clear": "Clear Screen", "Print": "Print",
    "Preview": "Print Preview", "Pan": "Pan", "ZoomExtends": "Zoom Extends", "ZWindow": "Zoom Window",
    "ZIn": "Zoom In", "ZOut": "Zoom Out", "Refresh": "Refresh Plot", "Step": "Single Block Step",
    "Slow": "Slow Motion Block Step", "Pause": "Pause", "Stop": "Stop", "GCode": "Show GCode",
    "Rapid": "Toggle Rapid Lines", "Axis": "Toggle Axis Lines", "Properties": "BackPlot Properties",
    "ToolColors": "Toogle Tool Change Colors",
}


def toolbar_state(frame):
    """Key -> enabled, for every button of the toolbar; a missing button fails."""
    buttons = toolbar_buttons(frame)
    missing = [key for key, tip in TOOL_TIPS.items() if tip not in buttons]
    check(not missing, "toolbar buttons not found by tool tip: %s" % missing)
    return {key: enabled(buttons[tip]) for key, tip in TOOL_TIPS.items()}


def enabled_only(*keys):
    """The toolbar state in which exactly `keys` are enabled."""
    return {key: key in keys for key in TOOL_TIPS}


def status_labels(frame):
    """The labels of the main window's status lines in their order: comment, code, X, Y."""
    import pyatspi
    bar = find_one(frame, lambda n: n.getRole() == pyatspi.ROLE_STATUS_BAR, "the status bar")

    def labels():
        found = find_all(bar, lambda n: n.getRole() == pyatspi.ROLE_LABEL)
        return found if len(found) == 4 else None
    return wait_for("the four status labels", labels)


def top_menu(frame, title):
    import pyatspi
    bar = find_one(frame, lambda n: n.getRole() == pyatspi.ROLE_MENU_BAR, "the menu bar")
    return find_one(bar, lambda n: n.getRole() == pyatspi.ROLE_MENU_ITEM and n.name == title and
                    n.parent.getRole() == pyatspi.ROLE_MENU_BAR, "the menu %r" % title)


def menu_popup(item):
    import pyatspi
    return next((child for child in children(item) if child.getRole() == pyatspi.ROLE_POPUP_MENU), None)


def shown_popup(item, what):
    """The menu of a menu item, once it is shown."""
    def probe():
        popup = menu_popup(item)
        return popup if popup is not None and showing(popup) else None
    return wait_for(what, probe)


def menu_items(popup):
    """The items a user sees in an open menu, in order: (name, enabled, checked). Separators
    and hidden items are left out, as a screen reader leaves them out."""
    import pyatspi
    return [(child.name, enabled(child), checked(child)) for child in children(popup)
            if child.getRole() == pyatspi.ROLE_MENU_ITEM and showing(child)]


def menu_item(frame, path):
    """The menu item at `path` (captions as a screen reader reads them, "File", "Open..."),
    whether its menu is open or not: its states can be read either way."""
    import pyatspi
    node = top_menu(frame, path[0])
    for name in path[1:]:
        node = next((child for child in children(menu_popup(node))
                     if child.getRole() == pyatspi.ROLE_MENU_ITEM and child.name == name), None)
        check(node is not None, "no menu item %r" % " > ".join(path))
    return node


def open_menu(desktop, window, frame, title, key):
    """Opens a menu of the menu bar with its Alt key and returns its popup once shown."""
    desktop.key(window, key)
    return shown_popup(top_menu(frame, title), "the %s menu to open" % title)


def close_menu(desktop, frame, popup):
    """Closes the open menus with Esc and leaves the menu bar, so that no further Esc
    reaches the main window (where it is a command of its own)."""
    import pyatspi
    desktop.press("Escape")
    wait_for("the menu to close", lambda: not showing(popup))
    bar = find_one(frame, lambda n: n.getRole() == pyatspi.ROLE_MENU_BAR, "the menu bar")
    if focused(bar):
        desktop.press("Escape")
        wait_for("the menu bar to let the keyboard go", lambda: not focused(bar))


def open_properties(d, main_window, frame, app):
    """Options > Properties... from the keyboard: the dialog's accessible node once shown."""
    open_menu(d, main_window, frame, "Options", "alt+o")
    d.press("p")
    d.window("Properties")
    return top_window(app, "Properties")


def open_details(d, main_window, frame, app):
    """View > Step Details from the keyboard: the Details window's accessible node and its
    report text, once shown."""
    import pyatspi
    open_menu(d, main_window, frame, "View", "alt+v")
    d.press("d")
    d.window("Details")
    details = top_window(app, "Details")
    return details, find_one(details, lambda n: n.getRole() == pyatspi.ROLE_TEXT, "the report text")


def close_details(d, details):
    """The Details window's OK button, through the accessibility bus."""
    import pyatspi
    press_button(role_named(details, pyatspi.ROLE_PUSH_BUTTON, "OK"))
    d.wait_gone("Details")


def exit_program(d, main_window, frame):
    """File > Exit from the keyboard: the program's exit status."""
    open_menu(d, main_window, frame, "File", "alt+f")
    d.press("x")
    try:
        return d.app.wait(timeout=60)
    except subprocess.TimeoutExpired:
        raise TestFailure("the program did not end within 60 s")


def meaningful(name):
    """A name that says something: not empty, not only blanks and punctuation."""
    return any(unicodedata.category(c)[0] in "LN" for c in name or "")


# ---- the companion CLI ----

def cli(program, *args):
    """Runs backplot-cli of the same build as the window program (build/app/backplot)."""
    cli_program = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(program))), "cli", "backplot-cli")
    result = subprocess.run([cli_program, *args], capture_output=True, text=True, timeout=120)
    check(result.returncode == 0, "backplot-cli %s failed (%d): %s" % (" ".join(args), result.returncode,
                                                                       result.stderr))
    return result.stdout
