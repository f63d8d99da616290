"""What a screen reader user meets along the paths of the other cases: every control shown
in the main window (menus, toolbar, status labels, canvas, step listing, source view), the
open dialog, the properties dialog, the Details window and the DXF save dialog has a name
that says what it is, no two toolbar buttons share one, and a machine type chosen through
the accessibility bus (as a screen reader or a voice-control tool chooses it) can be
applied like a clicked one; the toolbar's Axis and Rapid toggles read as the Drawing Aids
left them, and their Toggle action sets the aid as a click does."""


from desktop import (TestFailure, check, checked, close_details, close_menu, enabled, find_all, meaningful, open_details,
                     open_menu, open_properties, press_button, role_named, run, showing, shown_popup, status_labels,
                     toolbar_buttons, top_window, wait_for)


def control_roles():
    import pyatspi
    return {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON,
            pyatspi.ROLE_MENU_ITEM, pyatspi.ROLE_PAGE_TAB, pyatspi.ROLE_TEXT, pyatspi.ROLE_PASSWORD_TEXT,
            pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_LIST, pyatspi.ROLE_TREE, pyatspi.ROLE_TREE_TABLE,
            pyatspi.ROLE_TABLE, pyatspi.ROLE_SLIDER, pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_ENTRY}


def audit(checks, root, where, roles=None):
    """Every shown control (of `roles`, or of any control role), and every other shown node
    that takes the keyboard focus (the rows and cells of a list excepted: their text is
    their name), has a meaningful name."""
    import pyatspi
    only = roles
    roles = roles or control_roles()
    data = {pyatspi.ROLE_LIST_ITEM, pyatspi.ROLE_TABLE_CELL, pyatspi.ROLE_TABLE_COLUMN_HEADER,
            pyatspi.ROLE_TABLE_ROW_HEADER, pyatspi.ROLE_TREE_ITEM}
    nodes = find_all(root, lambda n: showing(n) and n.getRole() not in data and (
        n.getRole() in roles or (only is None and n.getState().contains(pyatspi.STATE_FOCUSABLE))))
    check(nodes, "no controls found in " + where)
    for node in nodes:
        checks.expect(meaningful(node.name), "%s: a %s without a meaningful name (%r, described as %r)"
                      % (where, node.getRoleName(), node.name, node.description))
    return nodes


def file_dialog_controls():
    """What this program chooses in the platform's file dialogs: the name field and the
    buttons. The rest of those dialogs is the toolkit's."""
    import pyatspi
    return {pyatspi.ROLE_TEXT, pyatspi.ROLE_PUSH_BUTTON}


def audit_menus(checks, d, main_window, frame):
    for title, key in (("File", "alt+f"), ("View", "alt+v"), ("Options", "alt+o"), ("Help", "alt+h")):
        popup = open_menu(d, main_window, frame, title, key)
        audit(checks, popup, "the %s menu" % title)
        if title == "File":
            d.press("a")
            item = next(n for n in find_all(popup, lambda n: n.name == "Save As..."))
            submenu = shown_popup(item, "the Save As submenu")
            audit(checks, submenu, "the Save As submenu")
            d.press("Escape")
            wait_for("the submenu to close", lambda: not showing(submenu))
        close_menu(d, frame, popup)


def drawing_aids(d, main_window, frame, app):
    """Options > Drawing Aids...: its check boxes by caption, and the dialog itself."""
    import pyatspi
    open_menu(d, main_window, frame, "Options", "alt+o")
    d.press("a")
    d.window("Drawing Aids")
    dialog = top_window(app, "Drawing Aids")
    boxes = {name: role_named(dialog, pyatspi.ROLE_CHECK_BOX, name)
             for name in ("Axis Lines", "Rapid Lines", "Rapid Points")}
    boxes["dialog"] = dialog
    return boxes


def main(d, checks, program):
    import pyatspi

    main_window, app, frame = d.start_shown(program)

    # 1. The open dialog.
    d.open_program(main_window, app, frame, "mill_pocket_plate.nc", lambda dialog: audit(
        checks, top_window(app, "Open File"), "the Open File dialog", file_dialog_controls()))

    # 2. The main window with all its panes: the steps show the listing (the second
    #    gives Step Details back), the View menu the source.
    d.key(main_window, "s")
    d.key(main_window, "s")
    listing = role_named(frame, pyatspi.ROLE_TEXT, "Stepped blocks")
    wait_for("the step listing", lambda: showing(listing))
    open_menu(d, main_window, frame, "View", "alt+v")
    d.press("v")
    wait_for("the source view", lambda: find_all(frame, lambda n: n.getRole() == pyatspi.ROLE_TEXT and
                                                  n.name == "G-code source" and showing(n)))
    audit(checks, frame, "the main window")
    for label, what in zip(status_labels(frame), ("comment", "code", "X readout", "Y readout")):
        checks.expect(meaningful(label.name) or meaningful(label.description),
                      "the %s label says nothing of what it is: %r, %r" % (what, label.name, label.description))
    names = {}
    for tip, button in toolbar_buttons(frame).items():
        names.setdefault(button.name, []).append(tip)
    for name, tips in names.items():
        checks.expect(len(tips) == 1, "toolbar buttons %s read alike, as %r" % (" and ".join(tips), name))
    audit_menus(checks, d, main_window, frame)

    # 3. The Details window.
    details = open_details(d, main_window, frame, app)[0]
    audit(checks, details, "the Details window")
    close_details(d, details)

    # 4. The properties dialog; Lathe chosen through the bus must make Apply usable.
    properties = open_properties(d, main_window, frame, app)
    audit(checks, properties, "the Properties dialog (Files page)")
    lathe = role_named(properties, pyatspi.ROLE_RADIO_BUTTON, "Lathe")
    apply = role_named(properties, pyatspi.ROLE_PUSH_BUTTON, "Apply")
    press_button(lathe, "Toggle")
    wait_for("Lathe to be chosen", lambda: checked(lathe))
    try:
        wait_for("Apply", lambda: enabled(apply), timeout=10)
    except TestFailure:
        checks.expect(False, "Lathe chosen through the accessibility bus leaves Apply disabled")
    press_button(role_named(properties, pyatspi.ROLE_PUSH_BUTTON, "Cancel"))
    d.wait_gone("Properties")

    # 5. The toolbar's toggles read the drawing aids, whatever set them, and their Toggle
    #    action sets the aid as a click does (stepping, which greys them, ended first).
    d.key(main_window, "Escape")
    buttons = toolbar_buttons(frame)
    axis, rapid = buttons["Toggle Axis Lines"], buttons["Toggle Rapid Lines"]
    wait_for("the toggles to be usable", lambda: enabled(axis) and enabled(rapid))
    checks.equal("Axis, Rapid pressed at first", (checked(axis), checked(rapid)), (True, True))
    aids = drawing_aids(d, main_window, frame, app)
    for name, wanted in (("Axis Lines", False), ("Rapid Lines", False), ("Rapid Points", True)):
        if checked(aids[name]) != wanted:
            press_button(aids[name], "Toggle")
    press_button(role_named(aids["dialog"], pyatspi.ROLE_PUSH_BUTTON, "OK"))
    d.wait_gone("Drawing Aids")
    wait_for("Axis and Rapid to follow the aids", lambda: not checked(axis) and not checked(rapid))
    press_button(axis, "Toggle")
    wait_for("Axis to be pressed again", lambda: checked(axis))
    aids = drawing_aids(d, main_window, frame, app)
    checks.equal("Axis Lines, Rapid Lines, Rapid Points after the Toggle",
                 tuple(checked(aids[name]) for name in ("Axis Lines", "Rapid Lines", "Rapid Points")),
                 (True, False, True))
    press_button(role_named(aids["dialog"], pyatspi.ROLE_PUSH_BUTTON, "Cancel"))
    d.wait_gone("Drawing Aids")

    # 6. The DXF save dialog, left with Esc.
    open_menu(d, main_window, frame, "File", "alt+f")
    d.press("a")
    wait_for("the Save As submenu", lambda: find_all(frame, lambda n: n.name == "DXF File" and showing(n)))
    d.press("d")
    dialog_window = d.window("Save As DXF File")
    audit(checks, top_window(app, "Save As DXF File"), "the Save As DXF File dialog",
          file_dialog_controls())
    d.key(dialog_window, "Escape")
    d.wait_gone("Save As DXF File")


if __name__ == "__main__":
    run(main)
