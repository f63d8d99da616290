"""Opening a sample through File > Open... as a keyboard user does, read as a screen reader
reads it: the File and View menus before and after (names, enabled and checked states,
no "Plot From"), the exact title of the open dialog, the status texts after the drawing,
the toolbar before and after, and the new recent-files entry."""

import os

from desktop import (TOOL_TIPS, close_menu, enabled_only, heard, menu_items, menu_keys, open_menu, reads, run,
                     set_field, status_labels, toolbar_state, wait_for)

# What the View menu shows, in order, whatever is loaded; "Plot From" is never among them.
VIEW_ITEMS = ["Clear", "Redraw", "Auto Redraw", "Zoom", "Pan", "Single Block Step", "Step Details",
              "Slow Motion Block Step", "View GCode Source"]

# Exit, Open and Properties are the only buttons that need no program.
TOOLBAR_EMPTY = enabled_only("Exit", "Open", "Properties")
# A program drawn: everything but Pause and Stop, which only playback enables.
TOOLBAR_LOADED = enabled_only(*[key for key in TOOL_TIPS if key not in ("Pause", "Stop")])


# The keys announced with each item: the shortcut, else Alt and the marked letter as the
# caption has it ("Print Pre&view" gives Alt+v, "E&xit" Alt+x).
FILE_KEYS = [("Open...", "Ctrl+O"), ("Save As...", "Alt+A"), ("Print Preview", "Alt+v"), ("Print", "Ctrl+P"),
             ("Printer Setup...", "Alt+u"), ("Exit", "Alt+x")]
VIEW_KEYS = list(zip(VIEW_ITEMS, ["Alt+C", "Alt+R", "Alt+A", "Alt+Z", "Alt+P", "Alt+S", "Alt+D", "Alt+M", "Alt+V"]))


def read_menu(d, window, frame, title, key):
    """Opens a menu, reads its items and their announced keys, and closes it again."""
    popup = open_menu(d, window, frame, title, key)
    items, keys = menu_items(popup), menu_keys(popup)
    close_menu(d, frame, popup)
    return items, keys


def main(d, checks, program):
    sample = os.path.join(os.path.dirname(os.path.abspath(program)), "mill_pocket_plate.nc")
    main_window, app, frame = d.start_shown(program)

    # 1. Nothing loaded: only what needs no program can be used.
    comment, code, xpos, ypos = status_labels(frame)
    checks.expect(reads(comment, "  Ready"), "comment label before an open: %r" % heard(comment))
    checks.equal("toolbar before an open", toolbar_state(frame), TOOLBAR_EMPTY)
    items, keys = read_menu(d, main_window, frame, "File", "alt+f")
    checks.equal("File menu before an open", items, [
        ("Open...", True, False),
        ("Save As...", False, False),
        ("Print Preview", False, False),
        ("Print", False, False),
        ("Printer Setup...", True, False),
        ("Exit", True, False),
    ])
    checks.equal("keys of the File menu", keys, FILE_KEYS)
    items, keys = read_menu(d, main_window, frame, "View", "alt+v")
    checks.equal("View menu before an open", items, [(name, False, False) for name in VIEW_ITEMS])
    checks.equal("keys of the View menu", keys, VIEW_KEYS)
    # Leaving the menus gave the main window no Esc (which would enable Step and more).
    checks.equal("toolbar after reading the menus", toolbar_state(frame), TOOLBAR_EMPTY)

    # 2. File > Open... from the keyboard; the dialog by its exact title.
    open_menu(d, main_window, frame, "File", "alt+f")
    d.press("o")
    dialog = d.window("Open File")  # by its exact title
    set_field(app, "mill_pocket_plate.nc")
    d.key(dialog, "Return")
    d.wait_gone("Open File")

    # 3. Drawn: the toolbar is the last thing the open sets.
    wait_for("the program to be drawn", lambda: toolbar_state(frame)["Step"] or
             set(d.window_names()) - {"Tarvo Backplot"})
    checks.equal("windows after the open", d.window_names(), ["mill_pocket_plate.nc \u2014 Tarvo Backplot"])
    checks.equal("toolbar after the open", toolbar_state(frame), TOOLBAR_LOADED)
    checks.expect(reads(comment, " Opening file " + sample), "comment label after the open: %r" % heard(comment))
    checks.expect(reads(code, " mill_pocket_plate.nc"), "code label after the open: %r" % heard(code))

    # 4. The menus for a loaded program, and the file at the head of the recent files.
    checks.equal("File menu after the open", read_menu(d, main_window, frame, "File", "alt+f")[0], [
        ("Open...", True, False),
        ("Save As...", True, False),
        ("Print Preview", True, False),
        ("Print", True, False),
        ("Printer Setup...", True, False),
        ("Exit", True, False),
        (sample, True, False),
    ])
    checks.equal("View menu after the open", read_menu(d, main_window, frame, "View", "alt+v")[0],
                 [(name, True, False) for name in VIEW_ITEMS])


if __name__ == "__main__":
    run(main)
