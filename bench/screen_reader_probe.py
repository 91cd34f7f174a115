#!/usr/bin/python3
# How Quillion fares under a real screen reader: Orca, switched on the way a
# desktop does it (the accessibility bus's ScreenReaderEnabled), on a display
# of the caller's, with speech going to a null sound device. Measures a
# 101 by 101 run with puzzles and answers, a print count of 0 for some
# seconds ended with Q, then how soon Orca speaks keys pressed afterwards on
# the main page and in practice (from its --debug-file's SPEECH OUTPUT
# lines), and Orca's CPU time. Run it once without and once with Orca.
# Usage: screen_reader_probe.py QUILLION_BINARY DISPLAY [--orca]
#   (needs the Debian packages orca, speech-dispatcher, espeak-ng)
import datetime
import os
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "e2e"))
import atspi  # noqa: E402

binary, display = sys.argv[1], sys.argv[2]
with_orca = "--orca" in sys.argv
buses = atspi.Buses()
work = buses.folder
home = os.path.join(work, "home")
os.makedirs(os.path.join(home, ".config", "speech-dispatcher"))
with open(os.path.join(home, ".config", "speech-dispatcher", "speechd.conf"), "w") as conf:
    conf.write('AudioOutputMethod "alsa"\nAudioALSADevice "null"\nDefaultModule espeak-ng\n'
               'AddModule "espeak-ng" "sd_espeak-ng" "espeak-ng.conf"\n')
env = dict(buses.env, DISPLAY=display, HOME=home, CUPS_SERVER=os.path.join(work, "no-cups.sock"))
debug = os.path.join(work, "orca.debug")
orca = None
if with_orca:
    buses.set_screen_reader(True)
    orca = subprocess.Popen(["orca", "--replace", "-u", os.path.join(work, "orca-prefs"), "--debug-file", debug],
                            env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
    time.sleep(4)
program = subprocess.Popen([binary], env=env, stdout=open(os.path.join(work, "log"), "w"), stderr=subprocess.STDOUT)
window = atspi.Window(display, program.pid)
xdotool, click, type_into, wid = window.xdotool, window.click, window.type_into, window.id
time.sleep(2)


def documents():
    return open(os.path.join(work, "log"), errors="replace").read().count(" saved as ")


def until(condition, limit=600, started=None):
    started = started or time.time()
    while not condition() and time.time() - started < limit:
        time.sleep(0.01)
    return time.time() - started


def cpu(pid):
    with open("/proc/%d/stat" % pid) as stat:
        fields = stat.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


COUNT, SIZE, CREATE, PRACTICE = (392, 97), (416, 65), (328, 152), (268, 328)
type_into(*SIZE, "101")
type_into(*COUNT, "1")
time.sleep(1)
before = documents()
clicked = time.time()
click(*CREATE)
took = until(lambda: documents() > before and xdotool("getwindowname", wid) == "Quillion", started=clicked)
print("a 101 by 101 run with puzzles and answers, from the click to its document: %.2f s" % took)

type_into(*SIZE, "5")
type_into(*COUNT, "0")
time.sleep(1)
orca_cpu = cpu(orca.pid) if orca else 0
click(*CREATE)
time.sleep(10)
xdotool("key", "q")
print("a print count of 0 for 10 s, then Q: the title back after %.2f s"
      % until(lambda: xdotool("getwindowname", wid) == "Quillion"))
if orca:
    print("Orca's CPU time meanwhile: %.1f s" % (cpu(orca.pid) - orca_cpu))
time.sleep(1)

presses = []
for key in ("Tab", "Tab", "shift+Tab"):
    presses.append((key, time.time()))
    xdotool("key", key)
    time.sleep(1.5)
type_into(*SIZE, "5")
click(*PRACTICE)
time.sleep(2)
for key in ("Right", "Down", "Right", "Left", "Up"):
    presses.append((key, time.time()))
    xdotool("key", key)
    time.sleep(1.5)
time.sleep(2)
print("program alive:", program.poll() is None)
program.kill()
if orca:
    time.sleep(2)
    os.killpg(orca.pid, 15)
    spoken = []
    day = datetime.date.today()
    for line in open(debug, errors="replace"):
        if "SPEECH OUTPUT:" in line:
            clock = datetime.datetime.combine(day, datetime.time.fromisoformat(line.split(" - ")[0].strip()))
            spoken.append((clock.timestamp(), line.split("SPEECH OUTPUT:")[1].strip()))
    for i, (key, pressed) in enumerate(presses):
        end = presses[i + 1][1] if i + 1 < len(presses) else pressed + 5
        said = [(at, text) for at, text in spoken if pressed <= at < end]
        print("%-9s spoken after %s: %s" % (key, "%.2f s" % (said[0][0] - pressed) if said else "-",
                                            " ".join(text.split("{")[0] for _, text in said)[:90]))
buses.stop()
