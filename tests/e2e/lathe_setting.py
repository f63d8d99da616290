"""The machine type through the properties dialog: "Lathe" on the "Files" page, Apply, OK;
then the lathe sample opened through File > Open... is translated as a lathe program (no
"Backplot Error" box, Step Details reports Z and D as `backplot-cli details --lathe` does,
the pointer over the canvas reads Z and X at the plot position under it), the settings file
written at File > Exit holds Mill=0, and the next start shows "Lathe" chosen, which "Mill"
chosen and cancelled does not change."""

import configparser
import os

from desktop import (check, checked, cli, close_details, enabled, exit_program, extents, heard, open_details,
                     open_properties, press_button, role_named, run, showing, status_labels, text_of, wait_for,
                     wait_reading)

RECORD = 2  # "N20 G0 X50. Z10.": a lathe rapid, which a milling translation stores quite differently
NUMBER = r"(-?\d+\.\d{1,6})"  # the readout's mask "##0.0#####"


def stored_mill(d):
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    parser.read(d.settings_file())
    return parser.get("Settings", "Mill", fallback=None)


def main(d, checks, program):
    import pyatspi

    sample = os.path.join(os.path.dirname(os.path.abspath(program)), "lathe_shaft.nc")
    report = cli(program, "details", sample, "--lathe", "--record", str(RECORD)).split("\n")[:-1]
    check(report != cli(program, "details", sample, "--record", str(RECORD)).split("\n")[:-1],
          "the milling and lathe reports of record %d differ" % RECORD)

    main_window, app, frame = d.start_shown(program)
    check(stored_mill(d) is None, "no settings stored before the first exit")

    # 1. Options > Properties..., "Files" page: Lathe, Apply, OK.
    dialog = open_properties(d, main_window, frame, app)
    mill = role_named(dialog, pyatspi.ROLE_RADIO_BUTTON, "Mill")
    lathe = role_named(dialog, pyatspi.ROLE_RADIO_BUTTON, "Lathe")
    checks.expect(showing(lathe), "the Files page is the one shown")
    checks.equal("Mill, Lathe checked at first", (checked(mill), checked(lathe)), (True, False))
    apply, ok, cancel = (role_named(dialog, pyatspi.ROLE_PUSH_BUTTON, name) for name in ("Apply", "OK", "Cancel"))
    checks.equal("Apply enabled before a change", enabled(apply), False)
    x, y, width, height = extents(lathe)
    d.click(x + min(8, width // 2), y + height // 2)
    wait_for("Lathe to be chosen", lambda: checked(lathe))
    wait_for("Apply to be enabled", lambda: enabled(apply))
    press_button(apply)
    wait_for("Apply to be done", lambda: not enabled(apply))
    checks.equal("OK, Cancel enabled after Apply", (enabled(ok), enabled(cancel)), (True, False))
    press_button(ok)
    d.wait_gone("Properties")

    # 2. File > Open... the lathe sample: no "Backplot Error", the whole program drawn.
    d.open_program(main_window, app, frame, "lathe_shaft.nc")
    checks.equal("windows after the open", d.window_names(), ["lathe_shaft.nc \u2014 Tarvo Backplot"])
    comment, code, xpos, ypos = status_labels(frame)
    checks.expect(" lathe_shaft.nc" in heard(code), "code label after the open: %r" % heard(code))

    # 3. The readout: Z along the canvas, X (a diameter) up it, at the plot position of
    #    the pixel under the pointer, for the view the CLI gives on a canvas of this size.
    canvas = role_named(frame, pyatspi.ROLE_FILLER, "Plot")
    cx, cy, cw, ch = extents(canvas)
    scale = next(line for line in cli(program, "view", sample, "--lathe", "--size", "%dx%d" % (cw, ch))
                 .splitlines() if line.startswith("Scale "))
    left, top, span_x, span_y = (float(v) for v in scale.split()[1:])
    for fx, fy in ((0.25, 0.3), (0.7, 0.8)):
        px, py = int(cw * fx), int(ch * fy)
        # The readout of the pointer's last place (or of the open) is not this one's.
        before_z, before_x = heard(xpos), heard(ypos)
        d.move_pointer(cx + px, cy + py)
        expected_z = left + px * span_x / cw
        expected_x = -(top + py * span_y / ch) * 2
        where = "the pointer at pixel (%d, %d)" % (px, py)
        z = wait_reading(xpos, r" Z " + NUMBER, unlike=before_z)
        checks.expect(z is not None and abs(float(z.group(1)) - expected_z) < 2e-5,
                      "first readout with %s: %r, expected ' Z %.6f'" % (where, heard(xpos), expected_z))
        x_read = wait_reading(ypos, r" X " + NUMBER, unlike=before_x)
        checks.expect(x_read is not None and abs(float(x_read.group(1)) - expected_x) < 2e-5,
                      "second readout with %s: %r, expected ' X %.6f'" % (where, heard(ypos), expected_x))
        checks.expect(sample + " " in heard(code), "code label with %s: %r" % (where, heard(code)))
    d.park_pointer()

    # 4. The records are the lathe ones: Step Details of record 2 reads as the CLI's.
    for _ in range(RECORD):
        d.key(main_window, "s")
    listing = role_named(frame, pyatspi.ROLE_TEXT, "Stepped blocks")
    wait_for("%d steps" % RECORD, lambda: len((text_of(listing) or "").split("\n")) == RECORD)
    details, text = open_details(d, main_window, frame, app)
    checks.equal("Step Details of record %d" % RECORD, text_of(text).split("\n"), report)
    close_details(d, details)

    # 5. File > Exit writes the settings.
    checks.equal("exit status", exit_program(d, main_window, frame), 0)
    checks.equal("Mill in the settings file after the exit", stored_mill(d), "0")

    # 6. The next start reads "Lathe" back.
    main_window, app, frame = d.start_shown(program)
    dialog = open_properties(d, main_window, frame, app)
    mill = role_named(dialog, pyatspi.ROLE_RADIO_BUTTON, "Mill")
    lathe = role_named(dialog, pyatspi.ROLE_RADIO_BUTTON, "Lathe")
    checks.equal("Mill, Lathe checked after a restart", (checked(mill), checked(lathe)), (False, True))
    # Mill chosen and cancelled: only Apply writes a page, so Lathe stays.
    x, y, width, height = extents(mill)
    d.click(x + min(8, width // 2), y + height // 2)
    wait_for("Mill to be chosen", lambda: checked(mill))
    press_button(role_named(dialog, pyatspi.ROLE_PUSH_BUTTON, "Cancel"))
    d.wait_gone("Properties")
    checks.equal("exit status after the restart", exit_program(d, main_window, frame), 0)
    checks.equal("Mill in the settings file after the second exit", stored_mill(d), "0")


if __name__ == "__main__":
    run(main)
