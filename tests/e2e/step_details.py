"""Single block step with the S key, read as a screen reader reads it: the code label, the
step listing (the trimmed blocks of the records stepped so far, one per line), "Step
Details" given back by the second S, the check mark of "Single Block Step", the toolbar in
its stepping state; then View > Step Details, whose report must read line for line as
`backplot-cli details` gives it for the same record, closed with its OK button."""

import json
import os

from desktop import (check, checked, cli, close_details, enabled, enabled_only, heard, menu_item, open_details,
                     role_named, run, showing, status_labels, text_of, toolbar_state, wait_for)

STEPS = 3

# Stepping: Stop ends it; the view buttons keep the state they had; the rest waits.
TOOLBAR_STEPPING = enabled_only("Stop", "Pan", "ZoomExtends", "ZWindow", "ZIn", "ZOut", "Refresh", "GCode")


def main(d, checks, program):
    import pyatspi

    sample = os.path.join(os.path.dirname(os.path.abspath(program)), "mill_pocket_plate.nc")
    records = [json.loads(line) for line in cli(program, "records", sample, "--json").splitlines()]
    check(len(records) > STEPS, "the sample has more than %d records" % STEPS)
    blocks = [r["BlockText"].strip() for r in records[:STEPS]]
    report = cli(program, "details", sample, "--record", str(STEPS)).split("\n")
    check(report[-1] == "", "the report ends with a line break")
    report.pop()

    main_window, app, frame = d.start_shown(program)

    d.open_program(main_window, app, frame, "mill_pocket_plate.nc")

    listing = role_named(frame, pyatspi.ROLE_TEXT, "Stepped blocks")
    code = status_labels(frame)[1]
    step_item = menu_item(frame, ["View", "Single Block Step"])
    details_item = menu_item(frame, ["View", "Step Details"])
    checks.expect(not showing(listing), "the step listing is hidden before the first step")

    # 1. Three steps; each adds its block to the listing.
    for n in range(1, STEPS + 1):
        d.key(main_window, "s")
        wait_for("step %d in the listing" % n,
                 lambda: text_of(listing) is not None and len(text_of(listing).split("\n")) == n and
                 text_of(listing).split("\n")[-1] != "")
        checks.expect("  Press Esc key to end single step." in heard(code),
                      "code label after step %d: %r" % (n, heard(code)))
        # The first S takes Step Details away (the step itself does), the next S gives it back.
        checks.equal("Step Details enabled after step %d" % n, enabled(details_item), n > 1)
    checks.equal("the step listing", text_of(listing).split("\n"), blocks)
    checks.expect(showing(listing), "the step listing is shown")
    checks.expect(checked(step_item), "Single Block Step is checked while stepping")
    checks.equal("toolbar while stepping", toolbar_state(frame), TOOLBAR_STEPPING)

    # 2. View > Step Details, a modeless window titled "Details".
    details, text = open_details(d, main_window, frame, app)
    checks.equal("the report's accessible name", text.name, "Step details report")
    checks.equal("the report", text_of(text).split("\n"), report)

    # 3. OK closes it; stepping goes on where it was.
    close_details(d, details)
    checks.equal("toolbar after the report closed", toolbar_state(frame), TOOLBAR_STEPPING)
    checks.equal("the step listing after the report closed", text_of(listing).split("\n"), blocks)


if __name__ == "__main__":
    run(main)
