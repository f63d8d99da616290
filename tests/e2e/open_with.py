"""A program file reaching the running window from outside, as a desktop user sends it: a
second start naming a file (a file manager's "Open With") hands it to the window, which
opens it as File > Open does and ends silently, even with a stale socket of a crashed copy
left behind; a second start without a file leaves the window alone; the program shown,
written again on disk, is opened again; and the window comes back where it was left."""

import os
import re
import shutil
import socket
import subprocess

from desktop import exit_program, heard, run, status_labels, wait_for, wait_reading

EDITED = "G00 X0. Y0.\nG01 X40. Y-30.\nG01 X0.\nM30\n"


def later_start(d, program, *args):
    """A second start: its exit status and everything it wrote."""
    result = subprocess.run([program, *args], env=d.env, capture_output=True, text=True, timeout=30)
    return result.returncode, result.stdout + result.stderr


def geometry(d, window):
    found = re.findall(r"(\d+)[,x](\d+)", d.xdotool("getwindowgeometry", window))
    return tuple(int(v) for pair in found for v in pair)


def main(d, checks, program):
    # A crashed copy's socket: a socket file nobody listens on.
    stale = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    stale.bind(os.path.join(d.env["XDG_RUNTIME_DIR"], "tarvo-backplot.socket"))
    stale.close()
    sample = os.path.join(d.folder, "plate.nc")
    shutil.copy(os.path.join(os.path.dirname(os.path.abspath(program)), "mill_pocket_plate.nc"), sample)
    main_window, app, frame = d.start_shown(program)
    comment, code, xpos, ypos = status_labels(frame)

    # 1. Without a file a second start ends and changes nothing.
    checks.equal("second start without a file", later_start(d, program), (0, ""))
    checks.expect("  Ready" in heard(comment), "comment after a start without a file: %r" % heard(comment))

    # 2. With a file: handed over, opened as File > Open does, the title names it.
    checks.equal("second start with a file", later_start(d, program, sample), (0, ""))
    checks.expect(wait_reading(comment, re.escape(" Opening file " + sample), 60),
                  "comment after the hand-over: %r" % heard(comment))
    wait_for("the title to name the program", lambda: d.window_names() == ["plate.nc \u2014 Tarvo Backplot"])
    checks.expect(wait_reading(code, re.escape(" plate.nc"), 60), "code label: %r" % heard(code))

    # 3. Written again on disk: opened again.
    with open(sample, "w") as out:
        out.write(EDITED)
    checks.expect(wait_reading(comment, re.escape("  Opened again after a change on disk: " + sample), 60),
                  "comment after the change on disk: %r" % heard(comment))

    # 4. Moved and resized, then closed: the next start comes back there.
    d.xdotool("windowsize", "--sync", main_window, "900", "640")
    d.xdotool("windowmove", "--sync", main_window, "120", "70")
    left = wait_for("the new geometry", lambda: (lambda g: g if g == (120, 70, 900, 640) else None)(
        geometry(d, main_window)), 20)
    checks.equal("exit status", exit_program(d, main_window, frame), 0)
    main_window, app, frame = d.start_shown(program)
    checks.equal("geometry after a restart", geometry(d, main_window), left)


if __name__ == "__main__":
    run(main)
