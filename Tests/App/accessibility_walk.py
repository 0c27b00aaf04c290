#!/usr/bin/env python3
"""Walks the app as a screen reader does: over AT-SPI, in a virtual display.

Every node that says something has a role and a name. Presses Start, sees the session recorded,
presses Stop, opens the history and finds the session. Ends with status 1 and a reason when
something is missing. Run it by accessibility_walk.sh, which prepares the display and the bus.
"""

import subprocess
import sys
import time

import pyatspi

LONGEST_WAIT = 40.0  # seconds; only a failing walk waits that long
SESSION = "Power Session"  # how an automatic title begins

# Containers that only arrange what is in them need no name.
ARRANGING = {
    pyatspi.ROLE_PANEL, pyatspi.ROLE_FILLER, pyatspi.ROLE_GROUPING, pyatspi.ROLE_SCROLL_PANE,
    pyatspi.ROLE_LAYERED_PANE, pyatspi.ROLE_LIST, pyatspi.ROLE_UNKNOWN, pyatspi.ROLE_SCROLL_BAR,
}
CONTROLS = {
    pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON,
    pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY, pyatspi.ROLE_LIST_ITEM,
}


class Missing(Exception):
    """Something that the walk needs is not there."""


def wait_for(what, find):
    """The first true result of `find`, called until it gives one."""
    end = time.monotonic() + LONGEST_WAIT
    while time.monotonic() < end:
        try:
            found = find()
            if found:
                return found
        except Exception:  # pylint: disable=broad-except
            pass  # a node may go while it is looked at
        time.sleep(0.1)
    raise Missing(what)


def application(pid):
    for app in pyatspi.Registry.getDesktop(0):
        if app is not None and app.get_process_id() == pid:
            return app
    return None


def nodes(root):
    """All nodes below `root`, with their depth, in the order of the tree."""
    stack = [(root, 0)]
    while stack:
        node, depth = stack.pop()
        if node is None:
            continue
        yield node, depth
        try:
            children = [node.getChildAtIndex(i) for i in range(node.childCount)]
        except Exception:  # pylint: disable=broad-except
            continue
        stack.extend((child, depth + 1) for child in reversed(children))


def is_visible(node):
    """Not what has scrolled out of sight, although a screen reader reaches it."""
    return node.getState().contains(pyatspi.STATE_VISIBLE)


def text_of(node):
    try:
        return node.queryText().getText(0, -1).strip()
    except NotImplementedError:
        return ""


def find_node(app, role, name, starts=False):
    for node, _ in nodes(app):
        if node.getRole() == role and is_visible(node):
            if node.name == name or (starts and node.name.startswith(name)):
                return node
    return None


def press(app, name, starts=False, role=pyatspi.ROLE_PUSH_BUTTON):
    node = wait_for(f"a control named {name!r}", lambda: find_node(app, role, name, starts))
    action = node.queryAction()
    names = [action.getName(i).lower() for i in range(action.nActions)]
    for wanted in ("press", "toggle", "click"):
        if wanted in names:
            print(f"pressing {node.name!r}")
            action.doAction(names.index(wanted))
            return
    raise Missing(f"an action of {name!r}: it has {names}")


def wait_checked(root, role, name, is_checked):
    wait_for(f"{name!r} {'on' if is_checked else 'off'}", lambda: find_node(root, role, name)
             .getState().contains(pyatspi.STATE_CHECKED) == is_checked)


def check_controls(window):
    """Pressing a switch or a choice does it once, and the node says so."""
    for is_checked in (False, True):
        press(window, "3 Temps", role=pyatspi.ROLE_CHECK_BOX)
        wait_checked(window, pyatspi.ROLE_CHECK_BOX, "3 Temps", is_checked)
    for chosen, other in (("°F", "°C"), ("°C", "°F")):
        press(window, chosen, role=pyatspi.ROLE_RADIO_BUTTON)
        wait_checked(window, pyatspi.ROLE_RADIO_BUTTON, chosen, True)
        wait_checked(window, pyatspi.ROLE_RADIO_BUTTON, other, False)
        wait_for(f"a temperature in {chosen}", lambda unit=chosen: any(
            name.endswith(unit) and name[:1].isdigit() for name in all_names_in(window)))


def check_tree(app, title):
    """Prints the tree of one window, and complains about nodes that say nothing of themselves."""
    window = wait_for(f"the window {title!r}", lambda: next(
        (child for child in app if child is not None and child.name == title), None))
    faults = []
    spoken = 0
    for node, depth in nodes(window):
        if not is_visible(node):
            continue
        role = node.getRole()
        text = text_of(node)
        label = f"{node.getRoleName()}: {node.name!r}"
        print("  " * depth + label + (f" ({node.description})" if node.description else ""))
        if node.name or text:
            spoken += 1
        if role == pyatspi.ROLE_INVALID or role == pyatspi.ROLE_UNKNOWN and (node.name or text):
            faults.append(f"no role: {label}")
        if text and not node.name:
            faults.append(f"a text without a name: {text!r}")
        if not node.name and (role in CONTROLS or role not in ARRANGING):
            faults.append(f"no name: {label}")
    print(f"{title}: {spoken} nodes that speak, {len(faults)} faults")
    if faults:
        raise Missing("; ".join(faults))
    return window


def names_in(window):
    return [node.name for node, _ in nodes(window) if is_visible(node)]


def all_names_in(window):
    """Those below the fold too."""
    return [node.name for node, _ in nodes(window)]


def walk(app):
    dropdown = check_tree(app, "Quorvex")
    if not any("W" in name for name in names_in(dropdown)):
        raise Missing("a wattage in the dropdown")
    press(app, "Open Dashboard")
    check_tree(app, "Quorvex Dashboard")
    wait_for("the field for the session's name", lambda: find_node(
        app, pyatspi.ROLE_TEXT, "Optional session name"))
    window = next(child for child in app if child.name == "Quorvex Dashboard")
    check_controls(window)
    press(window, "Start")
    wait_for("the word that says that it records", lambda: "Recording" in names_in(window))
    wait_for("the recorded session's title", lambda: any(
        SESSION in name for name in names_in(window)))
    wait_for("a recorded wattage", lambda: any(
        name.endswith("W") and name[:1].isdigit() for name in names_in(window)))
    check_tree(app, "Quorvex Dashboard")
    press(window, "Stop")
    press(window, "View History (1)")
    wait_for("the session in the history", lambda: next(
        (node for node, _ in nodes(window)
         if node.getRole() == pyatspi.ROLE_LIST_ITEM and SESSION in node.name), None))
    wait_for("the session's report", lambda: "Sampling Confidence" in all_names_in(window))
    for text in ("Export", "Delete", "Duration", "Average", "Power", "Telemetry Channels",
                 "Battery terminal draw", "completed", "1 session"):
        wait_for(f"the text {text!r}", lambda wanted=text: wanted in all_names_in(window))
    check_tree(app, "Quorvex Dashboard")
    press(app, "Settings", starts=True)
    check_tree(app, "Quorvex Settings")


def main():
    with subprocess.Popen(sys.argv[1:]) as process:
        try:
            app = wait_for("the app on the accessibility bus", lambda: application(process.pid))
            wait_for("the dropdown", lambda: app.childCount > 0)
            wait_for("the first reading", lambda: any(
                "W" in node.name for node, _ in nodes(app)))
            walk(app)
            press(app, "Quit Quorvex")
            if process.wait(timeout=LONGEST_WAIT) != 0:
                raise Missing("a clean end")
        except Missing as missing:
            print(f"missing: {missing}", file=sys.stderr)
            return 1
        finally:
            process.kill()
    print("The walk found everything.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
