#!/usr/bin/env python3
"""A whole dashboard service in one file, with nothing to install: `python3 service.py TOKEN [PORT]`.

It serves one meeting half an hour from now, two habits, two chores and some spending, and takes all
four actions. Start from here, and put your own data where the briefing is made. Everything is kept
in memory; captured thoughts are printed.
"""

import hmac
import json
import sys
from datetime import datetime, timedelta, timezone
from http.server import BaseHTTPRequestHandler, HTTPServer

TOKEN = sys.argv[1] if len(sys.argv) > 1 else sys.exit("usage: service.py TOKEN [PORT]")
PORT = int(sys.argv[2]) if len(sys.argv) > 2 else 8765
LARGEST_ACTION = 1 << 20

STARTED = datetime.now(timezone.utc).replace(microsecond=0)
HABITS = {"read": "Read", "walk": "Take a walk"}
CHORES = {"plants": ("Water the plants", "Living room"), "bins": ("Take the bins out", "Kitchen")}

done_habits = set()
done_chores = set()
spending_asked_at = STARTED


def briefing():
    start = STARTED + timedelta(minutes=30)
    open_chores = {key: value for key, value in CHORES.items() if key not in done_chores}
    return {
        "date": STARTED.date().isoformat(),
        "generatedAt": datetime.now(timezone.utc).timestamp(),
        "eventsToday": [
            {
                "title": "Coffee with the team",
                "start": start.isoformat(),
                "end": (start + timedelta(minutes=30)).isoformat(),
                "allDay": False,
                "meetingUrl": "https://meet.example.org/coffee",
            }
        ],
        "chores": {
            "count": len(open_chores),
            "top": [
                {"id": key, "name": name, "room": room, "daysOverdue": 0}
                for key, (name, room) in open_chores.items()
            ],
        },
        "habits": {
            "done": len(done_habits),
            "total": len(HABITS),
            "items": [
                {"id": key, "name": name, "done": key in done_habits,
                 "count": int(key in done_habits), "target": 1, "streak": 0}
                for key, name in HABITS.items()
            ],
        },
        "focus": {"productiveShare": 0.42},
        "spending": {
            "mtd": 412.1,
            "sameDayLastMonth": 380.0,
            "top": [{"bucket": "food", "label": "Groceries", "icon": "🛒",
                     "color": "#1E90FF", "amount": 412.1}],
            "asOf": STARTED.date().isoformat(),
            "generatedAt": spending_asked_at.timestamp(),
            "stale": False,
        },
    }


def act(action):
    """Does what `action` asks for, and returns the reply; an error's text is shown to the user."""
    global spending_asked_at
    match action:
        case {"type": "habit.toggle", "id": str(key)} if key in HABITS:
            done_habits.symmetric_difference_update({key})
        case {"type": "chore.done", "id": str(key)} if key in CHORES:
            done_chores.add(key)
        case {"type": "capture", "text": str(text)}:
            print("Captured:", text, flush=True)
        case {"type": "spending.refresh"}:
            spending_asked_at = datetime.now(timezone.utc)
        case _:
            return 400, {"error": "This service cannot do that"}
    return 200, {"ok": True}


class Service(BaseHTTPRequestHandler):
    def answer(self, status, value):
        body = json.dumps(value).encode()
        self.send_response(status)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def refused(self, path):
        key = self.headers.get("X-Api-Key", "")
        if not hmac.compare_digest(key.encode(), TOKEN.encode()):
            self.answer(401, {"error": "Wrong token"})
        elif self.path != path:
            self.answer(404, {"error": "No such page"})
        else:
            return False
        return True

    def do_GET(self):
        if not self.refused("/api/briefing"):
            self.answer(200, briefing())

    def do_POST(self):
        size = int(self.headers.get("Content-Length", 0))
        if size > LARGEST_ACTION:
            self.answer(413, {"error": "Too much"})
            return
        body = self.rfile.read(size)
        if self.refused("/api/briefing/action"):
            return
        try:
            action = json.loads(body)
        except ValueError:
            self.answer(400, {"error": "That is no JSON"})
        else:
            self.answer(*act(action))


server = HTTPServer(("127.0.0.1", PORT), Service)
print(f"http://127.0.0.1:{server.server_port}/api/briefing", flush=True)
server.serve_forever()
