#!/usr/bin/python3
"""The calendar used end to end, as a person uses it.

Starts the real program on its own X display with a window manager and a tray, finds
controls by their accessible names (AT-SPI) and works them with the real mouse and keys
(xdotool): a schedule with a Japanese subject and an apostrophe and a task are created
through "Schedule", both show in the panel and mark the day, the schedule is opened again
from its label and its time changed, the task is deleted through the right-click menu,
and the rows are then read from the database. A second run makes the calendar resident:
the close box hides it and a click on its tray icon brings it back. A third sets a hot key
in the settings dialog and presses it while another program has the focus.

The "maintenance" runs: an entry deleted from the list with the Delete key, a yearly
day-off added that then marks the grid; and a backup, an entry added after it, and the
backup restored, after which the program ends and starts again on the backup's data.

Run under its own session bus: dbus-run-session -- /usr/bin/python3 navigation_e2e.py [navigation|maintenance]
Set VERDALY_E2E_SHOTS to a folder to keep a screenshot of every menu on the way.
"""

import datetime
import os
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

import pyatspi

BIN_DIR = os.environ.get("VERDALY_BIN_DIR", "")
PROGRAM = os.path.join(BIN_DIR, "verdaly")
SHOTS = os.environ.get("VERDALY_E2E_SHOTS", "")
TIMEOUT = 30  # seconds for anything to appear; the machine may be busy


class Failure(Exception):
    pass


def wait_for(what, condition, timeout=TIMEOUT):
    deadline = time.monotonic() + timeout
    while True:
        try:
            result = condition()
        except Exception:  # a control vanishing while it is read counts as not there yet
            result = None
        if result:
            return result
        if time.monotonic() > deadline:
            raise Failure("timed out waiting for " + what)
        time.sleep(0.2)


class Desktop:
    """An X display with jwm (window manager and tray) and the accessibility bus."""

    def __init__(self):
        self.processes = []
        read_fd, write_fd = os.pipe()
        xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(write_fd), "-screen", "0", "1024x768x24",
                                 "-nolisten", "tcp"], pass_fds=(write_fd,), stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)
        self.processes.append(xvfb)
        os.close(write_fd)
        with os.fdopen(read_fd) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise Failure("Xvfb did not report its display")
        self.env = dict(os.environ, DISPLAY=":" + number, QT_QPA_PLATFORM="xcb",
                        QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", LANG="C.UTF-8")
        os.environ["DISPLAY"] = self.env["DISPLAY"]
        self.start(["jwm"])
        self.start(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"])
        try:
            # A loaded machine can take a while to bring the manager up.
            wait_for("the window manager's tray", lambda: b"JWM" in self.run(["xwininfo", "-root", "-tree"]),
                     timeout=3 * TIMEOUT)
        except Failure:
            self.stop()  # nothing of ours may outlive the run and hold the test's output open
            raise

    def start(self, command):
        process = subprocess.Popen(command, env=self.env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.processes.append(process)
        return process

    def run(self, command):
        return subprocess.run(command, env=self.env, check=True, capture_output=True, timeout=TIMEOUT).stdout

    def xdotool(self, *args):
        return self.run(["xdotool", *[str(a) for a in args]]).decode()

    def shot(self, name):
        if SHOTS:
            os.makedirs(SHOTS, exist_ok=True)
            time.sleep(0.3)
            self.run(["import", "-window", "root", os.path.join(SHOTS, name + ".png")])

    def stop(self):
        for process in reversed(self.processes):
            process.terminate()
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()


class Calendar:
    """The program on the desktop, reached by accessible name."""

    def __init__(self, desktop, data_dir):
        self.desktop = desktop
        self.process = desktop.start([PROGRAM, "--data-dir", data_dir])
        self.app = wait_for("the calendar on the accessibility bus", self.find_app)
        wait_for("the month grid", lambda: self.find("table"))

    def find_app(self):
        for app in pyatspi.Registry.getDesktop(0):
            if app is not None and app.name == "halvern-verdaly" and app.get_process_id() == self.process.pid:
                # Read the tree fresh each time: nothing here runs the event loop that would
                # keep a cache up to date as windows come and go.
                app.set_cache_mask(pyatspi.cache.NONE)
                return app
        return None

    def find(self, role, name=None, root=None, showing=True):
        """The first control of that role (and name) under root, breadth first."""
        queue = [root or self.app]
        while queue:
            node = queue.pop(0)
            if node is None:
                continue
            if node.getRoleName() == role and (name is None or node.name == name):
                if not showing or node.getState().contains(pyatspi.STATE_SHOWING):
                    return node
            queue.extend(node.getChildAtIndex(i) for i in range(node.childCount))
        return None

    def wait(self, role, name=None, root=None):
        return wait_for("%s %r" % (role, name), lambda: self.find(role, name, root))

    def gone(self, role, name, root=None):
        wait_for("%s %r to go" % (role, name), lambda: self.find(role, name, root) is None)

    def click(self, control, button=1):
        extents = control.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        x, y = extents.x + extents.width // 2, extents.y + extents.height // 2
        self.desktop.xdotool("mousemove", "--sync", x, y)
        self.desktop.xdotool("click", button)

    def windows(self):
        """The program's visible windows: id -> (title, height)."""
        try:
            ids = self.desktop.xdotool("search", "--onlyvisible", "--classname", "verdaly").split()
        except subprocess.CalledProcessError:  # xdotool answers 1 when it finds nothing
            return {}
        found = {}
        for window in ids:
            try:
                title = self.desktop.xdotool("getwindowname", window).strip()
                geometry = self.desktop.xdotool("getwindowgeometry", window)
            except subprocess.CalledProcessError:
                continue
            found[window] = (title, int(geometry.split("Geometry:")[1].strip().split("x")[1]))
        return found

    def open_menu(self, control, button=1):
        """Clicks a control and answers the pop-up menu window that it opens. Pop-up menus
        are no children of the application on the accessibility bus (a screen reader hears
        of them through focus), so the menu is found as a new window of the program."""
        before = set(self.windows())
        self.click(control, button)
        return wait_for("a pop-up menu", lambda: next(
            (w for w, (title, _) in self.windows().items() if w not in before and title == "halvern-verdaly"), None))

    def choose(self, menu, steps, shot=None):
        """Picks the item `steps` rows down in an open menu with the keyboard (0: close it)."""
        if shot:
            self.desktop.shot(shot)
        self.key(*(["Down"] * steps), "Return" if steps else "Escape")
        wait_for("the menu to close", lambda: menu not in self.windows())

    def type(self, text):
        self.desktop.xdotool("type", "--delay", 60, text)

    def fill(self, field, text):
        """Types text into a field as the user does. xdotool now and then drops a character
        it has to map to a spare key (kana, kanji), so the field is read back and typed
        again, whole, until it holds the text."""
        for _ in range(4):
            self.click(field)
            self.key("ctrl+a")
            for character in text:
                self.desktop.xdotool("type", "--delay", 80, character)
            if self.settled(lambda: self.text_of(field) == text):
                return
        raise Failure("could not type %r: the field holds %r" % (text, self.text_of(field)))

    def settled(self, condition):
        try:
            return wait_for("", condition, timeout=3)
        except Failure:
            return False

    def key(self, *keys):
        self.desktop.xdotool("key", "--delay", 60, *keys)

    def text_of(self, control):
        text = control.queryText()
        return text.getText(0, text.characterCount)

    def end(self):
        self.process.send_signal(signal.SIGTERM)
        self.process.wait(TIMEOUT)


def top_window(calendar, role, title, containing):
    """The program's top-level window of that role and title that holds the given control,
    for windows that share a title."""
    def found():
        for i in range(calendar.app.childCount):
            window = calendar.app.getChildAtIndex(i)
            if window is not None and window.getRoleName() == role and window.name == title \
                    and calendar.find(*containing, root=window):
                return window
        return None
    return wait_for("%s %r with %r" % (role, title, containing), found)


def answer(calendar, text, button="OK"):
    """Answers the message box that says text (or holds it, for long texts)."""
    box = wait_for("the message " + text, lambda: next(
        (b for b in [calendar.find("alert")] if b is not None and calendar.find("label", text, b)), None))
    calendar.click(calendar.wait("push button", button, box))
    return box


def choose_file(calendar, path):
    """Types a whole path into the file dialog that is up and accepts it. Return may first
    be taken by the name completer's pop-up, so it is pressed until the dialog is gone."""
    field = calendar.wait("text", "File name:")
    calendar.fill(field, path)
    for _ in range(3):
        calendar.key("Return")
        if calendar.settled(lambda: calendar.find("text", "File name:") is None):
            return
    raise Failure("the file dialog did not take " + path)


def store_entries(database, rows):
    """Entries as the editors keep them: (ID, DATA, BUSINESS, STARTDT, STARTTM, ENDDT, ENDTM, FROMTOKBN);
    tasks (DATA '2') are open."""
    with sqlite3.connect(database) as db:
        db.executemany("INSERT INTO TRNSCHTSK (ID, DATA, BUSINESS, STARTDT, STARTTM, ENDDT, ENDTM, FROMTOKBN, "
                       "COMPLETION, UPDTIME) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, '2026/01/01 00:00:00')",
                       [row + ("0" if row[1] == "2" else "",) for row in rows])


def subjects(database):
    with sqlite3.connect(database) as db:
        return [row[0] for row in db.execute("SELECT BUSINESS FROM TRNSCHTSK ORDER BY ID")]


def open_from_menu(calendar, steps, title):
    calendar.choose(calendar.open_menu(calendar.wait("link", "Menu")), steps)
    return calendar.wait("dialog", title)


def maintain(calendar, button, question, path, done):
    """A backup or restore from the settings dialog: the button, OK to its question, the
    file, and OK to the message that it was done."""
    calendar.click(calendar.wait("push button", button, open_from_menu(calendar, 4, "設定")))
    answer(calendar, question)
    choose_file(calendar, path)
    answer(calendar, done)


def list_and_day_off(desktop, data_dir):
    today = datetime.date.today()
    database = os.path.join(data_dir, "QMCalendar.mdb")
    Calendar(desktop, data_dir).end()  # the first start builds the database
    # A month of schedules from today on, and a task.
    names = ["朝会", "歯医者の予約", "企画書の締め切り", "誕生日会", "出張（大阪）", "健康診断", "引っ越しの見積もり",
             "同窓会"]
    rows = []
    for number, name in enumerate(names):
        day = (today + datetime.timedelta(days=4 * number)).strftime("%Y%m%d")
        rows.append((number + 1, "1", name, day, "%02d:00" % (9 + number), day, "%02d:30" % (9 + number), "A4"))
    rows.append((len(names) + 1, "2", "報告書を出す", "", "", (today + datetime.timedelta(days=10)).strftime("%Y%m%d"),
                 "", "T1"))
    store_entries(database, rows)
    calendar = Calendar(desktop, data_dir)

    # "一覧表示": today to a month on. The dentist away with the Delete key, after the question.
    listing = open_from_menu(calendar, 1, "スケジュール一覧")
    calendar.wait("table cell", "報告書を出す", listing)
    desktop.shot("list")
    calendar.click(calendar.wait("table cell", "歯医者の予約", listing))
    calendar.key("Delete")
    answer(calendar, "スケジュール : 歯医者の予約 を削除してよろしいですか？")
    calendar.gone("table cell", "歯医者の予約", listing)
    calendar.wait("table cell", "健康診断", listing)
    calendar.key("Escape")
    calendar.gone("dialog", "スケジュール一覧")

    # "休日設定": a new yearly day-off on another day of this month, with a Japanese remark.
    target = today + datetime.timedelta(days=1 if today.day < 28 else -1)
    day_offs = open_from_menu(calendar, 2, "休日設定")
    calendar.click(calendar.wait("push button", "新規", day_offs))
    editor = top_window(calendar, "dialog", "新規 - 休日設定", ("text", "備考"))
    calendar.fill(calendar.wait("text", "備考", editor), "創立記念日")
    # The editor starts on today; the day box is the one before the remark.
    calendar.key("shift+Tab", "Down" if target > today else "Up")
    desktop.shot("day-off-editor")
    calendar.click(calendar.wait("push button", "OK", editor))
    calendar.wait("list item", "%2d/%2d 創立記念日" % (target.month, target.day), day_offs)
    desktop.shot("day-offs")
    calendar.click(calendar.wait("push button", "OK", day_offs))
    calendar.gone("dialog", "休日設定")

    grid = calendar.wait("table")
    day_name = "%d年%d月%d日 " % (target.year, target.month, target.day)
    wait_for("the day-off in the grid", lambda: next(
        (c for c in (grid.getChildAtIndex(i) for i in range(grid.childCount))
         if c.name.startswith(day_name) and c.name.endswith(" 創立記念日")), None))
    desktop.shot("day-off-in-grid")
    calendar.end()
    left = subjects(database)
    check(left == [n for n in names if n != "歯医者の予約"] + ["報告書を出す"], "entries after the run: %r" % (left,))
    with sqlite3.connect(database) as db:
        kept = db.execute("SELECT DATAN1, DATAN2, DATAS1 FROM TRNGENERAL WHERE CODE = 200").fetchall()
    check(kept == [(target.month, target.day, "創立記念日")], "day-offs after the run: %r" % (kept,))


def backup_and_restore(desktop, data_dir):
    today = datetime.date.today().strftime("%Y%m%d")
    database = os.path.join(data_dir, "QMCalendar.mdb")
    backup = os.path.join(os.path.dirname(data_dir), "saved.bdc")
    Calendar(desktop, data_dir).end()
    store_entries(database, [(1, "1", "バックアップ前の予定", today, "08:00", today, "", "A3")])
    calendar = Calendar(desktop, data_dir)
    calendar.wait("link", "バックアップ前の予定")

    maintain(calendar, "バックアップ", "現在の設定状態を保存してバックアップを行ってよろしいですか？", backup,
             "バックアップが正常に終了しました。")
    calendar.gone("dialog", "設定")
    check(os.path.getsize(backup) > 0, "no backup at " + backup)

    # An entry made after the backup, through the editor.
    calendar.choose(calendar.open_menu(calendar.wait("link", "Schedule")), 1)
    editor = calendar.wait("dialog", "スケジュール")
    calendar.fill(calendar.wait("text", "予定", editor), "after the backup")
    calendar.click(calendar.wait("push button", "OK", editor))
    calendar.wait("link", "after the backup")

    maintain(calendar, "復元", "復元を行うと現在のデータは全て破棄されます。\n復元開始してよろしいですか？", backup,
             "バックアップを正常に復元しました。\nアプリケーションを終了いたしますので再起動してください。")
    try:
        code = calendar.process.wait(TIMEOUT)
    except subprocess.TimeoutExpired:
        raise Failure("the program runs on after the restore")
    check(code == 0, "the program ended with %d after the restore" % code)

    check(subjects(database) == ["バックアップ前の予定"], "restored entries: %r" % (subjects(database),))
    kept = subjects(database + ".before-restore")
    check(kept == ["バックアップ前の予定", "after the backup"], "the data before the restore: %r" % (kept,))
    calendar = Calendar(desktop, data_dir)
    calendar.wait("link", "バックアップ前の予定")
    check(calendar.find("link", "after the backup") is None, "the entry after the backup is back")
    desktop.shot("after-restore")
    calendar.end()


def check(condition, message):
    if not condition:
        raise Failure(message)


def entries(database):
    with sqlite3.connect(database) as db:
        return db.execute("SELECT DATA, BUSINESS, STARTDT, STARTTM, ENDDT FROM TRNSCHTSK ORDER BY ID").fetchall()


def create_and_edit(desktop, data_dir):
    today = datetime.date.today()
    subject = "Team's 会議"
    calendar = Calendar(desktop, data_dir)

    # A schedule through "Schedule" -> "スケジュール".
    calendar.choose(calendar.open_menu(calendar.wait("link", "Schedule")), 1, shot="menu-schedule")
    editor = calendar.wait("dialog", "スケジュール")
    calendar.fill(calendar.wait("text", "予定", editor), subject)
    calendar.click(calendar.wait("text", "開始日", editor))
    calendar.key("Tab")
    calendar.type("09:00")
    desktop.shot("schedule-editor")
    calendar.click(calendar.wait("push button", "OK", editor))
    calendar.gone("dialog", "スケジュール")

    # A task the same way.
    calendar.choose(calendar.open_menu(calendar.wait("link", "Schedule")), 2)
    editor = calendar.wait("dialog", "タスク")
    calendar.fill(calendar.wait("text", "タスク名", editor), "牛乳を買う")
    calendar.click(calendar.wait("push button", "OK", editor))
    calendar.gone("dialog", "タスク")

    # Both in the panel, and today marked in the grid.
    calendar.wait("link", subject)
    calendar.wait("link", "牛乳を買う")
    day_name = "%d年%d月%d日" % (today.year, today.month, today.day)
    grid = calendar.wait("table")
    cell = wait_for("today's cell to say it has entries", lambda: next(
        (c for c in (grid.getChildAtIndex(i) for i in range(grid.childCount))
         if c.name.startswith(day_name + " ") and "予定あり" in c.name), None))
    check(cell.getState().contains(pyatspi.STATE_SELECTED), "today is not the selected cell: " + cell.name)
    desktop.shot("panel")

    # The schedule again from its label: a later start.
    calendar.click(calendar.wait("link", subject))
    editor = calendar.wait("dialog", "スケジュール")
    check(calendar.text_of(calendar.wait("text", "予定", editor)) == subject, "the editor shows another entry")
    calendar.click(calendar.wait("text", "開始日", editor))
    calendar.key("Tab", "ctrl+a")
    calendar.type("10:30")
    calendar.click(calendar.wait("push button", "OK", editor))
    calendar.gone("dialog", "スケジュール")

    # The task away through the right-click menu, after the question.
    menu = calendar.open_menu(calendar.wait("link", "牛乳を買う"), button=3)
    calendar.choose(menu, 2, shot="menu-entry-label")
    question = wait_for("the delete question", lambda: calendar.find("alert") or calendar.find("dialog"))
    desktop.shot("delete-question")
    calendar.click(calendar.wait("push button", "OK", question))
    calendar.gone("link", "牛乳を買う")

    # The other menus, looked at and left without a choice.
    for link in ("Menu", "Jump", "Help"):
        calendar.choose(calendar.open_menu(calendar.wait("link", link)), 0, shot="menu-" + link.lower())

    calendar.end()
    rows = entries(os.path.join(data_dir, "QMCalendar.mdb"))
    stamp = today.strftime("%Y%m%d")
    check(rows == [("1", subject, stamp, "10:30", "")], "rows after the run: %r" % (rows,))


def tray(desktop, data_dir):
    with sqlite3.connect(os.path.join(data_dir, "QMCalendar.mdb")) as db:
        db.execute("UPDATE TRNGENERAL SET DATAN1 = 1 WHERE CODE = 311")
    calendar = Calendar(desktop, data_dir)

    def main_window():
        return next((w for w, (title, height) in calendar.windows().items() if height > 100), None)

    def tray_icon():
        return next((w for w, (title, height) in calendar.windows().items()
                     if title == "halvern-verdaly" and height <= 64), None)

    wait_for("the main window", main_window)
    icon = wait_for("the tray icon", tray_icon)

    def hide():
        # The window manager's close key (Alt+F4) on the active window: the close box.
        desktop.xdotool("windowactivate", "--sync", main_window())
        desktop.xdotool("key", "alt+F4")
        wait_for("the window to hide", lambda: main_window() is None)
        time.sleep(0.5)
        check(calendar.process.poll() is None, "the program ended instead of hiding")

    # The close box hides a resident calendar; the program runs on.
    hide()

    # The tray menu: its first item, "カレンダーを開く", opens the calendar again.
    before = set(calendar.windows())
    desktop.xdotool("mousemove", "--window", icon, 8, 8, "click", 3)
    menu = wait_for("the tray menu", lambda: next(
        (w for w, (title, height) in calendar.windows().items() if w not in before and height > 30), None))
    desktop.shot("menu-tray")
    check(main_window() is None, "the tray menu alone brought the window back")
    geometry = desktop.xdotool("getwindowgeometry", menu)
    left, top = [int(v) for v in geometry.split("Position:")[1].split("(")[0].strip().split(",")]
    width = int(geometry.split("Geometry:")[1].strip().split("x")[0])
    # The pointer rests on the item a moment before the click, as a hand's does.
    desktop.xdotool("mousemove", "--sync", left + width // 2, top + 12)
    time.sleep(0.5)
    desktop.xdotool("click", 1)
    wait_for("the window to come back from the tray menu", main_window)

    # Hidden again, and back by a click on the icon itself.
    hide()
    desktop.xdotool("mousemove", "--window", icon, 8, 8)
    time.sleep(0.3)
    desktop.xdotool("click", 1)
    wait_for("the window to come back", main_window)
    desktop.shot("back-from-tray")
    calendar.end()


def hot_key_through_settings(desktop, data_dir):
    calendar = Calendar(desktop, data_dir)
    # "Menu" -> "設定": the fourth item below the two separators.
    calendar.choose(calendar.open_menu(calendar.wait("link", "Menu")), 4)
    dialog = calendar.wait("dialog", "設定")
    # The second function of the list is the new schedule (a combo box is named by its
    # current choice); the key is typed as a person would.
    calendar.click(calendar.wait("combo box", "カレンダー表示", dialog))
    time.sleep(0.5)
    calendar.key("Down", "Return")
    calendar.wait("combo box", "スケジュール入力", dialog)
    field = calendar.wait("text", "キー", dialog)
    calendar.click(field)
    calendar.key("ctrl+alt+k")
    wait_for("the key in the field", lambda: calendar.text_of(field) == "[Ctrl] + [Alt] + K")
    desktop.shot("settings-hot-key")
    calendar.click(calendar.wait("push button", "OK", dialog))
    calendar.gone("dialog", "設定")
    with sqlite3.connect(os.path.join(data_dir, "QMCalendar.mdb")) as db:
        stored = db.execute("SELECT DATAN1, DATAN2 FROM TRNGENERAL WHERE CODE = 82020").fetchall()
    check(stored == [(75, 6)], "the schedule hot key is stored as %r" % (stored,))

    # Another program in front; the keys still reach the calendar, which opens today's schedule.
    other = desktop.start(["xmessage", "-name", "otherprogram", "another program"])
    window = wait_for("the other program's window", lambda: desktop.xdotool(
        "search", "--onlyvisible", "--classname", "otherprogram").split()[0])
    desktop.xdotool("windowactivate", "--sync", window)
    desktop.xdotool("key", "ctrl+alt+k")
    editor = calendar.wait("dialog", "スケジュール")
    today = datetime.date.today().strftime("%Y/%m/%d")
    shown = calendar.text_of(calendar.wait("text", "開始日", editor))
    check(shown == today, "the editor opened on %r, not today" % shown)
    desktop.shot("hot-key-editor")
    calendar.click(calendar.wait("push button", "キャンセル", editor))
    calendar.gone("dialog", "スケジュール")
    other.terminate()
    calendar.end()


# The groups of runs, each with its data folder: runs that name the same folder share it.
RUNS = {
    "navigation": [
        (create_and_edit, "data", "entries created, edited and deleted through the window"),
        (tray, "data", "hidden to the tray and brought back by its icon"),
        (hot_key_through_settings, "data", "a hot key set in the settings dialog opens today's schedule"),
    ],
    "maintenance": [
        (list_and_day_off, "list", "an entry deleted from the list, a day-off added and marked"),
        (backup_and_restore, "restore", "backed up, restored, and started again on the backup"),
    ],
}


def main():
    group = sys.argv[1] if len(sys.argv) > 1 else "navigation"
    if group not in RUNS:
        print("FAIL: no runs called %r (%s)" % (group, ", ".join(RUNS)))
        return 1
    if not os.access(PROGRAM, os.X_OK):
        print("FAIL: no program at %r (VERDALY_BIN_DIR)" % PROGRAM)
        return 1
    if not os.environ.get("DBUS_SESSION_BUS_ADDRESS"):
        print("FAIL: run under a session bus (dbus-run-session)")
        return 1
    try:
        desktop = Desktop()
    except Failure as failure:
        print("FAIL:", failure)
        return 1
    try:
        with tempfile.TemporaryDirectory() as folder:
            for run, data, passed in RUNS[group]:
                run(desktop, os.path.join(folder, data))
                print("PASS:", passed)
    except Failure as failure:
        print("FAIL:", failure)
        desktop.shot("failure")
        return 1
    finally:
        desktop.stop()
    return 0


if __name__ == "__main__":
    sys.exit(main())
