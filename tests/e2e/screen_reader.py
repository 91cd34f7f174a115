#!/usr/bin/python3
# End to end as a screen reader sees the program: the real binary on the test
# display with accessibility on, while a client walks its whole tree again and
# again (as a reader does after every change) during a run printed until Q, a
# 101 by 101 run with puzzles and answers, practice with "New Square" and
# "Start Over", and a change of pages: the program stays alive and every walk
# ends. Then a practice puzzle is solved through AT-SPI alone (read from the
# table, blanks pressed, numbers typed into the entry box found by its name,
# the score read from the title), and a hint asked for with H is read from
# the entry box and seen on the screen. Also: the
# main page in its colours, practice asleep while it waits, a wrong number
# counted, and Quit's exit status 0.
# Usage: screen_reader.py QUILLION_BINARY [--switch]
#   --switch: accessibility on through the desktop's screen-reader setting,
#   not QT_LINUX_ACCESSIBILITY_ALWAYS_ON.
import faulthandler
import os
import shutil
import subprocess
import sys
import threading
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
faulthandler.enable()  # a crash of the client itself says where it happened
display = os.environ.get("QUILLION_E2E_DISPLAY")
missing = [tool for tool in ("dbus-daemon", "/usr/libexec/at-spi-bus-launcher", "xdotool") if not shutil.which(tool)]
try:
    import atspi
except ImportError:
    missing.append("python3-gi")
if not display or missing:
    print("skipped: " + ("no test display (scripts/test starts one)" if not display else
                         "no AT-SPI client here (missing %s; scripts/install-deps installs it)" % ", ".join(missing)))
    sys.exit(77)

buses = atspi.Buses()
home = os.path.join(buses.folder, "home")
os.mkdir(home)
log = os.path.join(buses.folder, "log")
env = dict(buses.env, DISPLAY=display, HOME=home, CUPS_SERVER=os.path.join(buses.folder, "no-cups.sock"))
if "--switch" in sys.argv:
    buses.set_screen_reader(True)
else:
    env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
buses.listen()
program = subprocess.Popen([sys.argv[1]], env=env, stdout=open(log, "w"), stderr=subprocess.STDOUT)


def finish(failure=None):
    if program.poll() is None:
        program.kill()
    program.wait()
    buses.stop()
    if failure:
        print("FAIL: " + failure + "\n--- program output:\n" + open(log, errors="replace").read()[-4000:])
    shutil.rmtree(buses.folder, ignore_errors=True)
    sys.exit(1 if failure else 0)


try:
    reader = atspi.Reader(buses, "Quillion")
except RuntimeError as error:
    finish(str(error))
window = atspi.Window(display, program.pid)
xdotool, click, type_into = window.xdotool, window.click, window.type_into


def title():
    """The title as the reader hears it (the X server's copy lags while a run keeps the program busy)."""
    return reader.name(reader.children(reader.app)[0])


def documents():
    return open(log, errors="replace").read().count(" saved as ")


def wait_for(condition, what, seconds=30):
    deadline = time.time() + seconds
    while time.time() < deadline:
        if program.poll() is not None:
            finish("the program died (status %s) while waiting for %s" % (program.returncode, what))
        buses.pump()
        if condition():
            return
        time.sleep(0.05)
    finish("waited %d s for %s; the title reads: %s" % (seconds, what, title()))


def menu(*keys):
    xdotool("key", "--delay", "60", "F10", *keys)
    time.sleep(0.3)


def walking(what, action):
    """Runs the action while another connection walks the whole tree in a loop."""
    walker = atspi.Reader(buses, "Quillion")
    walks, errors, stop = [], [], threading.Event()

    def walk():
        try:
            while not stop.is_set():
                walker.walk()
                walks.append(1)
        except Exception as error:  # the program went away or stopped answering
            errors.append(error)

    thread = threading.Thread(target=walk, daemon=True)
    before = buses.events
    thread.start()
    action()
    time.sleep(0.5)
    stop.set()
    thread.join(120)
    buses.pump()
    if thread.is_alive() or errors or not walks or program.poll() is not None:
        finish("during %s: %s" % (what, errors[0] if errors else "a walk did not end" if walks else "no walk ended"))
    print("%s: %d walks, %d events" % (what, len(walks), buses.events - before))


COUNT, SIZE, CREATE, PRACTICE, INFO = (392, 97), (416, 65), (328, 152), (268, 328), (260, 276)
SCORE = "Number of (5 by 5) Complete Magic Square(s) solved: %d"


def run_until_q():
    type_into(*COUNT, "0")
    before = documents()
    click(*CREATE)
    wait_for(lambda: title().startswith("Creating") and documents() > before, "the run to start")
    time.sleep(6)
    xdotool("key", "q")
    wait_for(lambda: title() == "Quillion", "Q to end the run", 60)


def run_101():
    type_into(*SIZE, "101")
    type_into(*COUNT, "1")
    before = documents()
    click(*CREATE)
    wait_for(lambda: documents() > before and title() == "Quillion", "the 101 by 101 run to end", 120)


def practise():
    type_into(*SIZE, "5")
    click(*PRACTICE)
    wait_for(lambda: title().startswith(SCORE % 0), "practice to start")
    for keys in (("Down", "Return"), ("Down", "Down", "Return")) * 3:  # New Square, Start Over
        menu(*keys)
        wait_for(lambda: title().startswith(SCORE % 0), "the next puzzle")


def switch_pages():
    click(*INFO)
    wait_for(lambda: reader.named("Back to Main Page"), "the information page")
    reader.press(reader.named("Back to Main Page"))
    wait_for(lambda: reader.named("Practice Solving Squares"), "the main page")
    menu("Right", "Right", "Down", "Return")  # Puzzle-mode > Choose Magic Square Properties
    wait_for(lambda: reader.named("Done"), "the properties page")
    reader.press(reader.named("Done"))


def puzzle():
    """The table of the puzzle in play, and its blanks worked out line by line
    (rows, columns and broken diagonals all sum to 65), in the order found."""
    wait_for(lambda: reader.find(reader.is_table), "the puzzle's table")
    table = reader.find(reader.is_table)
    if reader.table_size(table) != (5, 5):
        finish("the puzzle reads as %s cells" % (reader.table_size(table),))
    known = {(r, c): int(name) for r in range(5) for c in range(5)
             if (name := reader.name(reader.cell(table, r, c))) != "blank"}
    lines = [[(r, c) for c in range(5)] for r in range(5)] + [[(r, c) for r in range(5)] for c in range(5)]
    lines += [[(r, (r + k) % 5) for r in range(5)] for k in range(5)] + [[(r, (k - r) % 5) for r in range(5)]
                                                                       for k in range(5)]
    found = []
    while len(known) < 25:
        lone = [(line, [at for at in line if at not in known]) for line in lines]
        lone = [(line, gaps[0]) for line, gaps in lone if len(gaps) == 1]
        if not lone:
            finish("the puzzle cannot be worked out line by line")
        for line, at in lone:
            if at not in known:
                known[at] = 65 - sum(known[a] for a in line if a != at)
                found.append((at, known[at]))
    return table, found


def solve_through_atspi():
    """Once 99 first, which no 5 by 5 square holds: counted wrong."""
    table, found = puzzle()
    for count, ((row, column), value) in enumerate(found, 1):
        reader.press(reader.cell(table, row, column))
        box = reader.named("row %d, column %d" % (row + 1, column + 1), "text")
        if box is None or not reader.state(box, atspi.FOCUSED):
            finish("pressing the blank at row %d, column %d opened no focused entry box" % (row + 1, column + 1))
        if count == 1:
            xdotool("type", "99")
            xdotool("key", "Return")
            wait_for(lambda: title().endswith("Numbers incorrect: 1"), "a wrong number to be counted")
        xdotool("type", "--delay", "20", str(value))
        xdotool("key", "Return")
        wait_for(lambda: "correct: %d " % count in title() or title().startswith(SCORE % 1), "%d to be taken" % value)
    wait_for(lambda: title().startswith(SCORE % 1), "the puzzle to count as solved")


def hint():
    """H in the next puzzle: the entry box opens with the hint's words as its
    description, and the other cells of the line are marked on screen."""
    table, found = puzzle()
    xdotool("key", "h")
    wait_for(lambda: reader.find(lambda ref: reader.role(ref) == "text" and reader.state(ref, atspi.FOCUSED)),
             "the hint's entry box")
    box = reader.find(lambda ref: reader.role(ref) == "text" and reader.state(ref, atspi.FOCUSED))
    words = reader.name(box, "Description")
    if not words.startswith("Hint: ") or "; the magic total is 65" not in words:
        finish("the hint's entry box describes itself as %r" % words)
    if coloured_pixels("#E66E00") < 200:
        finish("no hint marks on the screen")
    xdotool("key", "Escape")
    print(words)


def cpu_ticks():
    with open("/proc/%d/stat" % program.pid) as stat:
        fields = stat.read().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])


def coloured_pixels(colour):
    shot = os.path.join(buses.folder, "shot.png")
    subprocess.run(["import", "-display", display, "-window", "root", shot])
    return int(subprocess.run(["convert", shot, "-fill", "black", "+opaque", colour, "-fill", "white", "-opaque",
                               colour, "-colorspace", "gray", "-format", "%[fx:round(mean*w*h)]", "info:"],
                              capture_output=True, text=True).stdout.strip() or 0)


def scenario():
    # The main page in its colours: the orange labels cover thousands of pixels.
    wait_for(lambda: coloured_pixels("#FF8000") > 3000, "the main page in its colours", 10)
    walking("a run printed until Q", run_until_q)
    walking("a 101 by 101 run with puzzles and answers", run_101)
    walking("practice with New Square and Start Over", practise)
    ticks = cpu_ticks()  # practice waits asleep: no CPU time over a second
    time.sleep(1)
    if cpu_ticks() - ticks > 5:
        finish("waiting for the player took %d ticks of CPU in one second" % (cpu_ticks() - ticks))
    solve_through_atspi()
    print("solved through AT-SPI: " + title())
    hint()
    menu("Down", "Down", "Down", "Down", "Return")  # Quit playing, after Hint
    wait_for(lambda: title() == "Quillion", "Quit playing")
    walking("a change of pages", switch_pages)
    menu("Down", "Return")  # Options > Quit
    try:
        status = program.wait(10)
    except subprocess.TimeoutExpired:
        finish("still running after Quit")
    finish(None if status == 0 else "Quit ended the program with status %d" % status)


try:
    scenario()
except Exception as error:  # the program stopped answering or went away: end it, and the buses, all the same
    finish("%s: %s" % (type(error).__name__, error))
