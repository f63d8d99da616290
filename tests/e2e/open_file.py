"""Opening a sample through File > Open... as a keyboard user does, read as a screen reader
reads it: the File and View menus before and after (names, enabled and checked states,
no "Plot From"), the exact titles the platform gives the windows, the open dialog showing a
part program whose name has no extension, an empty file refused, the status texts after
the drawing, the toolbar before and after, and the new recent-files entry."""

import os

from desktop import (TOOL_TIPS, close_menu, enabled_only, find_all, heard, menu_items, open_menu, run, status_labels,
                     toolbar_state, wait_for)

# What the View menu shows, in order, whatever is loaded; "Plot From" is never among them.
VIEW_ITEMS = ["Clear", "Redraw", "Auto Redraw", "Zoom", "Pan", "Single Block Step", "Step Details",
              "Slow Motion Block Step", "View GCode Source"]

# Exit, Open and Properties are the only buttons that need no program.
TOOLBAR_EMPTY = enabled_only("Exit", "Open", "Properties")
# A program drawn: everything but Pause and Stop, which only playback enables.
TOOLBAR_LOADED = enabled_only(*[key for key in TOOL_TIPS if key not in ("Pause", "Stop")])

FILE_ITEMS = ["Open...", "Save As...", "Print Preview", "Print", "Printer Setup...", "Exit"]


def file_menu(loaded):
    """The File menu's items: Open, Printer Setup and Exit need no program."""
    return [(name, loaded or name in ("Open...", "Printer Setup...", "Exit"), False) for name in FILE_ITEMS]


def read_menu(d, window, frame, title, key):
    """Opens a menu, reads its items, and closes it again."""
    popup = open_menu(d, window, frame, title, key)
    items = menu_items(popup)
    close_menu(d, frame, popup)
    return items


def main(d, checks, program):
    sample = os.path.join(os.path.dirname(os.path.abspath(program)), "mill_pocket_plate.nc")
    work = os.path.dirname(d.write("work/part", "G1 X1. Y1.\n"))
    empty = d.write("work/empty.nc", "")
    d.store_settings(Work_Dir=work)
    main_window, app, frame = d.start_shown(program)  # the windows are found by their exact titles

    # 1. Nothing loaded: only what needs no program can be used.
    comment, code, xpos, ypos = status_labels(frame)
    checks.expect("  Ready" in heard(comment), "comment label before an open: %r" % heard(comment))
    checks.equal("toolbar before an open", toolbar_state(frame), TOOLBAR_EMPTY)
    checks.equal("File menu before an open", read_menu(d, main_window, frame, "File", "alt+f"), file_menu(False))
    checks.equal("View menu before an open", read_menu(d, main_window, frame, "View", "alt+v"),
                 [(name, False, False) for name in VIEW_ITEMS])
    # Leaving the menus gave the main window no Esc (which would enable Step and more).
    checks.equal("toolbar after reading the menus", toolbar_state(frame), TOOLBAR_EMPTY)

    # 2. Ctrl+O in the "Work Dir": a program named without an extension is listed; an empty
    #    file is refused by a box of its own title, and nothing else is opened.
    d.open_program(main_window, app, frame, "empty.nc", lambda dialog: wait_for(
        "'part' listed in the open dialog", lambda: find_all(app, lambda n: n.name == "part")))
    box = d.window("Corvane Backplot")
    checks.equal("the message text", wait_for("the message text", lambda: [
        n.name for n in find_all(app, lambda n: n.name.endswith(" is an empty file"))]), [empty + " is an empty file"])
    checks.equal("windows with the message", d.window_names(), ["Corvane Backplot", "Tarvo Backplot"])
    d.key(box, "Return")
    d.wait_gone("Corvane Backplot")
    checks.equal("toolbar after the empty file", toolbar_state(frame), TOOLBAR_EMPTY)

    # 3. File > Open... from the keyboard; drawn once the toolbar, the last thing the open
    #    sets, is on.
    d.open_program(main_window, app, frame, sample, from_menu=True)
    checks.equal("windows after the open", d.window_names(), ["mill_pocket_plate.nc \u2014 Tarvo Backplot"])
    checks.equal("toolbar after the open", toolbar_state(frame), TOOLBAR_LOADED)
    checks.expect(" Opening file " + sample in heard(comment), "comment label after the open: %r" % heard(comment))
    checks.expect(" mill_pocket_plate.nc" in heard(code), "code label after the open: %r" % heard(code))

    # 4. The menus for a loaded program, and the file at the head of the recent files.
    checks.equal("File menu after the open", read_menu(d, main_window, frame, "File", "alt+f"),
                 file_menu(True) + [(sample, True, False)])
    checks.equal("View menu after the open", read_menu(d, main_window, frame, "View", "alt+v"),
                 [(name, True, False) for name in VIEW_ITEMS])


if __name__ == "__main__":
    run(main)
