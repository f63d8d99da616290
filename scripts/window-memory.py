#!/usr/bin/env python3
"""Opens a program in the real window on a private virtual display, the way a user opens a
very long one: given on the command line, every error box answered Cancel. Prints the
process's peak and resident memory once the window is idle again, and the longest stretch
in which the window's thread let no events run (from the gaps between its poll calls).
With --source, the source view is then shown (View > View GCode Source) and the figures
are printed again once the window is idle.

usage: window-memory.py BACKPLOT PROGRAM [--source]"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import time


def xdotool(env, *args):
    return subprocess.run(["xdotool", *args], env=env, capture_output=True, text=True).stdout.strip()


def status(pid):
    fields = {}
    with open("/proc/%d/status" % pid) as f:
        for line in f:
            name, _, value = line.partition(":")
            fields[name] = value.strip()
    return fields


def cpu_ticks(pid):
    with open("/proc/%d/stat" % pid) as f:
        parts = f.read().rsplit(")", 1)[1].split()
    return int(parts[11]) + int(parts[12])


def longest_stall(trace, tid):
    """Seconds between the end of one poll of thread `tid` and the start of its next. A
    poll that other threads interrupt in the trace stands as "<unfinished ...>" and
    "<... poll resumed>", the second stamped with its end."""
    call = re.compile(r"^(\d+)\s+(\d+\.\d+) (?:poll|ppoll)\(.*<(\d+\.\d+)>$")
    started = re.compile(r"^(\d+)\s+(\d+\.\d+) (?:poll|ppoll)\(.*<unfinished \.\.\.>$")
    resumed = re.compile(r"^(\d+)\s+(\d+\.\d+) <\.\.\. (?:poll|ppoll) resumed>")
    longest, last_end = 0.0, None
    with open(trace) as f:
        for line in f:
            line = line.strip()
            for pattern in (call, started, resumed):
                m = pattern.match(line)
                if m:
                    break
            if not m or int(m.group(1)) != tid:
                continue
            stamp = float(m.group(2))
            if pattern is resumed:
                last_end = stamp
                continue
            if last_end is not None:
                longest = max(longest, stamp - last_end)
            last_end = stamp + float(m.group(3)) if pattern is call else None
    return longest


def settle(env, pid):
    """Answers every error box with Cancel until the window has been idle for two seconds;
    gives how many there were."""
    boxes, idle_since, ticks = 0, time.monotonic(), cpu_ticks(pid)
    while time.monotonic() - idle_since < 2:
        box = xdotool(env, "search", "--onlyvisible", "--name", "^Corvane Backplot$")
        if box:
            xdotool(env, "windowfocus", "--sync", box.split()[0])
            xdotool(env, "key", "Escape")
            boxes += 1
            idle_since = time.monotonic()
        now = cpu_ticks(pid)
        if now != ticks:
            ticks, idle_since = now, time.monotonic()
        time.sleep(0.1)
    return boxes


def report(pid, when):
    s = status(pid)
    print("%s: peak resident (VmHWM) %.1f MB, resident (VmRSS) %.1f MB" %
          (when, int(s["VmHWM"].split()[0]) / 1024, int(s["VmRSS"].split()[0]) / 1024))


def main(app, program, show_source):
    folder = tempfile.mkdtemp(prefix="backplot-memory-")
    env = dict(os.environ, QT_QPA_PLATFORM="xcb")
    # Stores of its own, the one-instance lock included, so no other copy of the program
    # running on this machine is met.
    for name in ("config", "data", "cache", "runtime"):
        os.makedirs(os.path.join(folder, name), mode=0o700)
        env["XDG_%s_HOME" % name.upper() if name != "runtime" else "XDG_RUNTIME_DIR"] = os.path.join(folder, name)
    # The server picks a free display number and tells it through a pipe.
    reader, writer = os.pipe()
    xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", "1280x1024x24", "-nolisten", "tcp",
                             "-noreset"], pass_fds=(writer,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(writer)
    with os.fdopen(reader) as number:
        env["DISPLAY"] = ":" + number.readline().strip()
    trace = os.path.join(folder, "trace")
    try:
        tracer = subprocess.Popen(["strace", "-f", "-qq", "--seccomp-bpf", "-e", "trace=poll,ppoll", "-ttt", "-T",
                                   "-o", trace, app, program], env=env,
                                  stdout=subprocess.DEVNULL, stderr=open(os.path.join(folder, "errors"), "w"))
        pid = None
        while pid is None and tracer.poll() is None:
            children = subprocess.run(["pgrep", "-P", str(tracer.pid)], capture_output=True, text=True).stdout.split()
            pid = int(children[0]) if children else None
            time.sleep(0.05)
        if pid is None:
            sys.exit("the program did not start")
        time.sleep(0.5)
        if tracer.poll() is not None:
            sys.exit("the program ended at once: " + open(os.path.join(folder, "errors")).read())
        boxes = settle(env, pid)
        report(pid, "after opening")
        print("error boxes answered Cancel: %d" % boxes)
        if show_source:
            window = xdotool(env, "search", "--onlyvisible", "--name", "^Tarvo Backplot").split()[0]
            xdotool(env, "windowfocus", "--sync", window)
            xdotool(env, "key", "--clearmodifiers", "alt+v", "v")
            settle(env, pid)
            report(pid, "with the source view shown")
        os.kill(pid, 15)
        tracer.wait(timeout=30)
        print("longest time without events: %.0f ms" % (1000 * longest_stall(trace, pid)))
    finally:
        xvfb.kill()
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4) or sys.argv[3:] not in ([], ["--source"]):
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], sys.argv[3:] == ["--source"])
