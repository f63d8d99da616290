"""The titles the platform gives the windows read exactly as the program sets them, and
the open dialog shows part programs whose names have no extension."""

import os

from desktop import check, find_all, run, set_field, wait_for


def main(d, checks, program):
    work = os.path.dirname(d.write("work/part", "G1 X1. Y1.\n"))
    d.write("work/empty.nc", "")
    d.store_settings(**{"Work_Dir": work})
    main_window, app, frame = d.start_shown(program)  # the windows are found by their exact titles

    d.key(main_window, "ctrl+o")
    dialog = d.window("Open File")
    wait_for("'part' listed in the open dialog", lambda: find_all(app, lambda n: n.name == "part"))

    set_field(app, "empty.nc")
    d.key(dialog, "Return")
    box = d.window("Corvane Backplot")
    texts = wait_for("the message text", lambda: [n.name for n in find_all(
        app, lambda n: n.name.endswith(" is an empty file"))])
    check(texts[0] == os.path.join(work, "empty.nc") + " is an empty file", "message text: %r" % texts[0])
    for name in d.window_names():
        check("\u2014" not in name and "Tarvo Backplot" not in name or name == "Tarvo Backplot",
              "a title with something appended: %r" % name)
    d.key(box, "Return")
    wait_for("the box to close", lambda: "Corvane Backplot" not in d.window_names())


if __name__ == "__main__":
    run(main)
