#!/usr/bin/python3
# End to end as a screen reader sees the program: the real binary on the test
# display with accessibility on, while a client walks its whole tree again and
# again (as a reader does after every change) during a run printed until Q, a
# 101 by 101 run with puzzles and answers, practice with "New Square" and
# "Start Over", and a change of pages: the program stays alive and every walk
# ends. Then a practice puzzle is solved through AT-SPI alone, by its hints
# (read from the entry box and seen on the screen), blanks pressed in the
# table, numbers typed into the entry box found by its name, the score read
# from the title. Also: the main page in its colours and its boxes named
# after their captions, pictures described, practice asleep while it waits,
# a wrong number counted, and Quit's exit status 0.
# Usage: screen_reader.py QUILLION_BINARY [--switch]
#   --switch: accessibility on through the desktop's screen-reader setting,
#   not QT_LINUX_ACCESSIBILITY_ALWAYS_ON.
import faulthandler
import os
import re
import shutil
import subprocess
import sys
import threading
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
faulthandler.enable()  # a crash of the client itself says where it happened
display = os.environ.get("QUILLION_E2E_DISPLAY")
if not display:
    print("skipped: no test display (scripts/test starts one)")
    sys.exit(77)
import atspi  # noqa: E402 (its tools come with scripts/install-deps)

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


def expect(ok, failure):
    return ok or finish(failure)


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


def pictures_described(page):
    def shown(ref):
        return reader.role(ref) == "filler" and reader.state(ref, atspi.SHOWING)
    expect(reader.find(shown) and not reader.find(lambda ref: shown(ref) and len(reader.name(ref)) < 20),
           "a picture of the %s is not described" % page)


def switch_pages():
    click(*INFO)
    wait_for(lambda: reader.named("Back to Main Page"), "the information page")
    pictures_described("information page")
    reader.press(reader.named("Back to Main Page"))
    wait_for(lambda: reader.named("Practice Solving Squares"), "the main page")
    menu("Right", "Right", "Down", "Return")  # Puzzle-mode > Choose Magic Square Properties
    wait_for(lambda: reader.named("Done"), "the properties page")
    pictures_described("properties page")
    reader.press(reader.named("Done"))


def focused(role):
    return reader.find(lambda ref: reader.role(ref) == role and reader.state(ref, atspi.FOCUSED))


def solve_through_atspi():
    """A puzzle solved as the hint (H) shows it, through AT-SPI alone: the
    focused entry box names its cell and its description gives the number,
    and the line is marked on the screen. After Escape the blank is pressed
    in the table, and the entry box it opens covers the cell; the number is
    typed there, once after 99 (which no 5 by 5 square holds: counted wrong),
    once ended with the keypad's Enter. The cell then reads its number, and
    an arrow moves the focus to the next cell."""
    wait_for(lambda: reader.find(reader.is_table), "the puzzle's table")
    table = reader.find(reader.is_table)
    expect(reader.table_size(table) == (5, 5), "the puzzle reads as %s cells" % (reader.table_size(table),))
    for count in range(1, 26):
        xdotool("key", "h")
        wait_for(lambda: focused("text"), "the hint's entry box")
        name, words = reader.name(focused("text")), reader.name(focused("text"), "Description")
        cell, hint = re.match(r"row (\d), column (\d)$", name), re.match(r"Hint: .*, which make (\d+); the magic total is 65$", words)
        expect(cell and hint, "the hint's entry box reads %r: %r" % (name, words))
        expect(count > 1 or coloured_pixels("#E66E00") >= 200, "no hint marks on the screen")
        xdotool("key", "Escape")
        row, column, value = int(cell[1]) - 1, int(cell[2]) - 1, 65 - int(hint[1])
        wait_for(lambda: focused("text") is None, "Escape to close the entry box")
        at = reader.cell(table, row, column)
        expect(reader.name(at) == "blank", "the hinted cell at %s reads %r" % (name, reader.name(at)))
        reader.press(at)
        box = reader.named(name, "text")
        expect(box and reader.state(box, atspi.FOCUSED), "pressing the blank at %s opened no focused entry box" % name)
        (x, y, width, height), (cx, cy, cell_width, cell_height) = reader.extents(box), reader.extents(at)
        expect((x, y, height) == (cx, cy, cell_height) and width - cell_width in (0, 1),
               "the entry box at %s does not cover its cell" % ((x, y, width, height),))
        if count == 1:
            xdotool("type", "99")
            xdotool("key", "Return")
            wait_for(lambda: title().endswith("Numbers incorrect: 1"), "a wrong number to be counted")
        xdotool("type", "--delay", "20", str(value))
        xdotool("key", "KP_Enter" if count == 2 else "Return")
        wait_for(lambda: "correct: %d " % count in title() or title().startswith(SCORE % 1), "%d to be taken" % value)
        if title().startswith(SCORE % 1):
            return
        expect(reader.name(at) == str(value), "the cell at %s reads %r once answered" % (name, reader.name(at)))
        xdotool("key", "Right" if column < 4 else "Left")
        next_cell = reader.cell(table, row, column + (1 if column < 4 else -1))
        wait_for(lambda: reader.state(next_cell, atspi.FOCUSED), "the arrow to move the focus")
    finish("the puzzle was not solved by its hints")


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
    for caption in ("Allow how many random starting numbers?", "Size of Square (Prime Number):", "Print how many squares?",
                    "Starting Number:", "Distance Between Numbers:", "Leave how many blanks?"):
        expect(reader.find(lambda ref: reader.role(ref) == "text" and reader.name(ref) == caption),
               "no text box is named after its caption %r" % caption)
    walking("a run printed until Q", run_until_q)
    walking("a 101 by 101 run with puzzles and answers", run_101)
    walking("practice with New Square and Start Over", practise)
    ticks = cpu_ticks()  # practice waits asleep: no CPU time over a second
    time.sleep(1)
    spent = cpu_ticks() - ticks
    expect(spent <= 5, "waiting for the player took %d ticks of CPU in one second" % spent)
    solve_through_atspi()
    print("solved through AT-SPI: " + title())
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
