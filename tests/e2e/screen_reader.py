#!/usr/bin/python3
# End to end as a screen reader sees the program: the real binary on the test
# display, with accessibility on, while a client walks its whole accessible
# tree again and again (as a reader does after every change) during a run
# printed until Q, a 101 by 101 run with puzzles and answers, practice with
# "New Square" and "Start Over", and a change of pages. The program must stay
# alive and every walk must end. Then a practice puzzle is solved through
# AT-SPI alone (read from the tables, blanks pressed, numbers typed into the
# entry box found by its name, the score read from the title), and the next
# with the keyboard alone (arrows, Enter, digits).
# Usage: screen_reader.py QUILLION_BINARY [--switch]
#   --switch: accessibility turned on by the desktop's screen-reader setting
#   instead of QT_LINUX_ACCESSIBILITY_ALWAYS_ON.
import os
import shutil
import subprocess
import sys
import threading
import time

SKIP = 77
binary = sys.argv[1]
by_switch = "--switch" in sys.argv
display = os.environ.get("QUILLION_E2E_DISPLAY")
if not display:
    print("no test display (scripts/test starts one)")
    sys.exit(SKIP)
missing = [tool for tool in ("dbus-daemon", "/usr/libexec/at-spi-bus-launcher", "xdotool") if not shutil.which(tool)]
try:
    sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
    import atspi
except ImportError:
    missing.append("python3-gi")
if missing:
    print("skipped: no AT-SPI test client here (missing %s; scripts/install-deps installs them)" % ", ".join(missing))
    sys.exit(SKIP)

work = atspi.private_folder()
buses = atspi.Buses(work)
program = None
failed = []


def fail(message):
    print("FAIL: " + message)
    failed.append(message)
    finish()


def finish():
    if program is not None and program.poll() is None:
        program.kill()
        program.wait()
    buses.stop()
    if program is not None:
        with open(os.path.join(work, "log"), errors="replace") as log:
            output = log.read()
        if failed or "ERROR" in output or "runtime error" in output:
            print("--- program output:\n" + output[-6000:])
            failed.append("the program reported errors")
    shutil.rmtree(work, ignore_errors=True)
    sys.exit(1 if failed else 0)


def xdotool(*args):
    return subprocess.run(["xdotool"] + list(args), env=dict(os.environ, DISPLAY=display),
                          capture_output=True, text=True).stdout.strip()


def alive():
    return program.poll() is None


def title():
    """The title as the reader hears it (the X server's copy may lag while a run keeps the program busy)."""
    return reader.name(reader.children(reader.app)[0])


def wait_for(condition, what, seconds=30):
    deadline = time.time() + seconds
    while time.time() < deadline:
        if not alive():
            fail("the program died (status %s) while waiting for %s" % (program.returncode, what))
        buses.pump()
        if condition():
            return
        time.sleep(0.05)
    fail("waited %d s for %s; the title reads: %s" % (seconds, what, title()))


def click(x, y):
    """A click in the window, at a point of the page (below the menu bar)."""
    xdotool("mousemove", "--window", wid, str(x), str(y + 19), "click", "1")


def type_into(x, y, text):
    """Clicks a text box at (x, y) of the page and replaces its text by typing."""
    click(x, y)
    xdotool("key", "ctrl+a", "BackSpace")
    xdotool("type", "--delay", "20", text)


def menu(*keys):
    """A menu item chosen from the keyboard: F10, then the keys."""
    xdotool("key", "--delay", "60", "F10", *keys)
    time.sleep(0.3)


# The program, with the test's own home and no print service: pages go to files.
home = os.path.join(work, "home")
os.makedirs(home)
env = dict(buses.env, DISPLAY=display, HOME=home, CUPS_SERVER=os.path.join(work, "no-cups.sock"),
           QT_ACCESSIBILITY="1")
if by_switch:
    buses.set_screen_reader(True)
else:
    env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
buses.listen()
program = subprocess.Popen([binary], env=env, stdout=open(os.path.join(work, "log"), "w"), stderr=subprocess.STDOUT)
wid = ""
for _ in range(100):
    wid = xdotool("search", "--onlyvisible", "--pid", str(program.pid), "--name", "^Quillion$")
    if wid:
        wid = wid.splitlines()[0]
        break
    time.sleep(0.1)
if not wid:
    fail("no window titled Quillion appeared")
try:
    reader = atspi.Reader(buses, "Quillion")
except RuntimeError as error:
    fail(str(error))


class Walker(threading.Thread):
    """Walks the whole tree in a loop on a connection of its own."""

    def __init__(self):
        super().__init__(daemon=True)
        self.reader = atspi.Reader(buses, "Quillion")
        self.walks = 0
        self.stopping = False
        self.error = None
        self.longest = 0.0

    def run(self):
        while not self.stopping:
            started = time.time()
            try:
                self.reader.walk()
            except Exception as error:  # the program went away or stopped answering
                self.error = error
                return
            self.longest = max(self.longest, time.time() - started)
            self.walks += 1

    def finish(self, what):
        self.stopping = True
        self.join(120)
        if self.is_alive():
            fail("a walk of the tree did not end during %s" % what)
        if self.error is not None:
            fail("a walk of the tree failed during %s: %s" % (what, self.error))
        if self.walks == 0:
            fail("no walk of the tree ended during %s" % what)
        print("%s: %d walks, the longest %.1f s" % (what, self.walks, self.longest))


def walking(what, action):
    walker = Walker()
    before = sum(buses.events.values())
    walker.start()
    action()
    time.sleep(0.5)
    walker.finish(what)
    buses.pump()
    print("  %d events" % (sum(buses.events.values()) - before))
    if not alive():
        fail("the program died during %s" % what)


# The main page: boxes at their design places, in pixels of the page.
COUNT, SIZE = (392, 97), (416, 65)
CREATE, PRACTICE, INFO = (328, 152), (268, 328), (260, 276)


def run_until_q():
    type_into(*COUNT, "0")
    before = documents()
    click(*CREATE)
    wait_for(lambda: title().startswith("Creating") and documents() > before, "the run to start")
    time.sleep(6)
    xdotool("key", "q")
    wait_for(lambda: title() == "Quillion", "Q to end the run", 60)


def documents():
    with open(os.path.join(work, "log"), errors="replace") as log:
        return log.read().count(" saved as ")


def run_101():
    type_into(*SIZE, "101")
    type_into(*COUNT, "1")
    before = documents()
    started = time.time()
    click(*CREATE)
    wait_for(lambda: documents() > before and title() == "Quillion", "the 101 by 101 run to end", 120)
    print("the 101 by 101 run took %.1f s" % (time.time() - started))


SCORE = "Number of (5 by 5) Complete Magic Square(s) solved: %d"


def practise():
    type_into(*SIZE, "5")
    click(*PRACTICE)
    wait_for(lambda: title().startswith(SCORE % 0), "practice to start")
    for keys in (("Down", "Return"), ("Down", "Down", "Return")) * 3:  # New Square, Start Over
        menu(*keys)
        wait_for(lambda: title().startswith(SCORE % 0), "the next puzzle")
    time.sleep(1)


def puzzle():
    """The puzzle in play as the tables read it: the table, and each cell's name by (row, column)."""
    wait_for(lambda: reader.find(lambda ref: atspi.TABLE in reader.interfaces(ref)), "the puzzle's table")
    table = reader.find(lambda ref: atspi.TABLE in reader.interfaces(ref))
    rows, columns = reader.table_size(table)
    if (rows, columns) != (5, 5):
        fail("the puzzle reads as %d by %d cells" % (rows, columns))
    return table, {(r, c): reader.name(reader.cell(table, r, c)) for r in range(5) for c in range(5)}


def answers(cells):
    """Each blank worked out through a line with no other blank (rows, columns
    and the broken diagonals of a complete square all sum to 65), in the order
    found."""
    known = {at: int(name) for at, name in cells.items() if name != "blank"}
    lines = [[(r, c) for c in range(5)] for r in range(5)] + [[(r, c) for r in range(5)] for c in range(5)]
    lines += [[(r, (r + k) % 5) for r in range(5)] for k in range(5)]
    lines += [[(r, (k - r) % 5) for r in range(5)] for k in range(5)]
    found = []
    while len(known) < 25:
        progress = False
        for line in lines:
            open_cells = [at for at in line if at not in known]
            if len(open_cells) == 1:
                known[open_cells[0]] = 65 - sum(known[at] for at in line if at in known)
                found.append((open_cells[0], known[open_cells[0]]))
                progress = True
        if not progress:
            fail("the puzzle cannot be worked out line by line: %s" % cells)
    return found


def solve_through_atspi():
    """Press each blank, type into the entry box found by its name, read the score from the title."""
    table, cells = puzzle()
    found = answers(cells)
    for count, ((row, column), value) in enumerate(found, 1):
        reader.press(reader.cell(table, row, column))
        box = reader.named("row %d, column %d" % (row + 1, column + 1), "text")
        if box is None or not reader.states(box)[12]:
            fail("pressing the blank at row %d, column %d opened no focused entry box" % (row + 1, column + 1))
        xdotool("type", "--delay", "20", str(value))
        xdotool("key", "Return")
        wait_for(lambda: "Numbers correct: %d " % count in title() or title().startswith(SCORE % 1),
                 "the number %d to be taken" % value)
    wait_for(lambda: title().startswith(SCORE % 1), "the puzzle to count as solved")
    print("solved through AT-SPI: %d blanks; the title reads: %s" % (len(found), title()))


def solve_by_keyboard():
    """Arrows to each blank, Enter, the number, Enter; once Escape first. The
    cell the cursor lands on is the focused one for the reader."""
    table, cells = puzzle()
    found = answers(cells)
    at = (0, 0)
    for step, ((row, column), value) in enumerate(found):
        keys = (["Down"] * (row - at[0]) + ["Up"] * (at[0] - row) +
                ["Right"] * (column - at[1]) + ["Left"] * (at[1] - column))
        if keys:
            xdotool("key", "--delay", "30", *keys)
        at = (row, column)
        cell = reader.cell(table, row, column)
        wait_for(lambda: reader.states(cell)[12], "the cell cursor at row %d, column %d to have the focus"
                 % (row + 1, column + 1), 5)
        xdotool("key", "Return")
        if step == 0:  # Escape closes the box and counts nothing; Space opens it again
            xdotool("key", "--delay", "50", "Escape", "space")
        xdotool("type", "--delay", "20", str(value))
        xdotool("key", "Return")
        if step + 1 < len(found):
            wait_for(lambda: reader.name(cell) == str(value), "the number %d in its cell" % value, 10)
    wait_for(lambda: title().startswith(SCORE % 2), "the second puzzle to count as solved")
    if "Numbers incorrect: 0" not in title():
        fail("keyboard play counted wrong numbers: " + title())
    print("solved by keyboard: %d blanks; the title reads: %s" % (len(found), title()))


def quit_playing():
    menu("Down", "Down", "Down", "Return")
    wait_for(lambda: title() == "Quillion", "Quit playing")


def switch_pages():
    click(*INFO)
    wait_for(lambda: reader.named("Back to Main Page") is not None, "the information page")
    reader.press(reader.named("Back to Main Page"))
    time.sleep(0.5)
    menu("Right", "Right", "Down", "Return")  # Puzzle-mode > Choose Magic Square Properties
    wait_for(lambda: reader.named("Done") is not None, "the properties page")
    reader.press(reader.named("Done"))
    time.sleep(0.5)


walking("a run printed until Q", run_until_q)
walking("a 101 by 101 run with puzzles and answers", run_101)
walking("practice with New Square and Start Over", practise)
solve_through_atspi()
solve_by_keyboard()
quit_playing()
walking("a change of pages", switch_pages)

events = sum(buses.events.values())
print("events received: %d %s" % (events, dict(sorted(buses.events.items()))))
finish()
