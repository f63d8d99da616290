"""DXF export through File > Save As... > DXF File, as a keyboard user does it: the submenu's
items, the exact title and filters of the "Save As DXF File" dialog (opened in the "Work
Dir"), its refusal of a name that does not exist, the overwrite question for one that
does, and the written file: byte for byte what `backplot-cli dxf` writes for the same
program on a canvas of the same size."""

import os
import tempfile

from desktop import (cli, extents, find_all, find_one, menu_items, open_menu, role_named, run, set_field, showing,
                     shown_popup, top_window, top_windows, wait_for)


def alert(app):
    """The message box on top, if one is shown."""
    import pyatspi
    return next(iter(top_windows(app, pyatspi.ROLE_ALERT)), None)


def alert_text(box):
    import pyatspi
    return [n.name for n in find_all(box, lambda n: n.getRole() == pyatspi.ROLE_LABEL and n.name)]


def main(d, checks, program):
    import pyatspi

    sample = os.path.join(os.path.dirname(os.path.abspath(program)), "mill_pocket_plate.nc")
    target = d.write("work/part.dxf", "")
    work = os.path.dirname(target)
    d.store_settings(Work_Dir=work)
    main_window, app, frame = d.start_shown(program)

    d.open_program(main_window, app, frame, sample)

    # 1. File > Save As... > DXF File.
    open_menu(d, main_window, frame, "File", "alt+f")
    d.press("a")
    save_as = find_one(frame, lambda n: n.getRole() == pyatspi.ROLE_MENU_ITEM and n.name == "Save As...",
                       "Save As...")
    submenu = shown_popup(save_as, "the Save As submenu")
    checks.equal("the Save As submenu", menu_items(submenu), [("Windows Bitmap", True, False),
                                                               ("DXF File", True, False)])
    d.press("d")

    # 2. The dialog: its title, the folder "Work Dir", the two filters, DXF chosen.
    dialog_window = d.window("Save As DXF File")
    dialog = top_window(app, "Save As DXF File")
    wait_for("part.dxf listed in the dialog", lambda: find_all(dialog, lambda n: n.name == "part.dxf"))
    filters = [c for c in find_all(dialog, lambda n: n.getRole() == pyatspi.ROLE_COMBO_BOX)
               if "DXF files (*.dxf)" in [n.name for n in find_all(c, lambda n: n.getRole() == pyatspi.ROLE_LIST_ITEM)]]
    checks.equal("the filter lists", [([n.name for n in find_all(c, lambda n: n.getRole() ==
                                        pyatspi.ROLE_LIST_ITEM)], c.name) for c in filters],
                 [(["DXF files (*.dxf)", "Windows bmps (*.bmp)"], "DXF files (*.dxf)")])

    # 3. Only the name of an existing file is taken.
    set_field(app, "missing.dxf")
    d.key(dialog_window, "Return")
    box = wait_for("the file-not-found box", lambda: alert(app))
    checks.equal("file-not-found box title", box.name, "Save As DXF File")
    checks.equal("file-not-found box text", alert_text(box),
                 ["missing.dxf\nFile not found.\nCheck the file name and try again."])
    d.press("Return")
    wait_for("the box to close", lambda: alert(app) is None)
    checks.expect(not os.path.exists(os.path.join(work, "missing.dxf")), "missing.dxf was not created")
    checks.expect(showing(dialog), "the dialog stays open after a name that does not exist")
    d.focus(dialog_window)

    # 4. The existing one, and Yes to replacing it.
    set_field(app, "part.dxf")
    d.key(dialog_window, "Return")
    box = wait_for("the replace question", lambda: alert(app))
    checks.equal("replace question", alert_text(box), ["part.dxf already exists.\nDo you want to replace it?"])
    role_named(box, pyatspi.ROLE_PUSH_BUTTON, "Yes")
    d.press("alt+y")
    d.wait_gone("Save As DXF File")
    checks.equal("windows after the export", d.window_names(), ["mill_pocket_plate.nc \u2014 Tarvo Backplot"])

    # 5. The file, against the CLI's for the canvas of the same size.
    written = wait_for("the DXF file to be written",
                       lambda: (lambda b: b if b.endswith(b"EOF\r\n") else None)(open(target, "rb").read()))
    width, height = extents(role_named(frame, pyatspi.ROLE_FILLER, "Plot"))[2:]
    with tempfile.TemporaryDirectory() as scratch:
        expected_path = os.path.join(scratch, "expected.dxf")
        cli(program, "dxf", sample, "-o", expected_path, "--size", "%dx%d" % (width, height))
        expected = open(expected_path, "rb").read()
    got, want = written.split(b"\r\n"), expected.split(b"\r\n")
    first = next((i for i, (a, b) in enumerate(zip(got, want)) if a != b), min(len(got), len(want)))
    checks.expect(got == want, "the file differs from the CLI's (canvas %dx%d) at line %d: %r, expected %r"
                  % (width, height, first + 1, got[first:first + 3], want[first:first + 3]))


if __name__ == "__main__":
    run(main)
