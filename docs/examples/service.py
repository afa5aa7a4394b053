#!/usr/bin/env python3
"""A whole dashboard service in one file, with nothing to install: `python3 service.py TOKEN`.

It serves one meeting half an hour from now and two habits, and takes habit toggles. Start from
here, and put your own data where the briefing is made.
"""

import json
import sys
from datetime import datetime, timedelta, timezone
from http.server import BaseHTTPRequestHandler, HTTPServer

TOKEN = sys.argv[1] if len(sys.argv) > 1 else sys.exit("usage: service.py TOKEN [PORT]")
PORT = int(sys.argv[2]) if len(sys.argv) > 2 else 8765

STARTED = datetime.now(timezone.utc).replace(microsecond=0)
HABITS = {"read": "Read", "walk": "Take a walk"}
done = set()


def briefing():
    start = STARTED + timedelta(minutes=30)
    return {
        "date": STARTED.date().isoformat(),
        "generatedAt": datetime.now(timezone.utc).timestamp(),
        "eventsToday": [
            {
                "title": "Coffee with the team",
                "start": start.isoformat(),
                "end": (start + timedelta(minutes=30)).isoformat(),
                "allDay": False,
            }
        ],
        "chores": {"count": 0, "top": []},
        "habits": {
            "done": len(done),
            "total": len(HABITS),
            "items": [
                {"id": key, "name": name, "done": key in done,
                 "count": int(key in done), "target": 1, "streak": 0}
                for key, name in HABITS.items()
            ],
        },
        "focus": {},
    }


class Service(BaseHTTPRequestHandler):
    def answer(self, status, value):
        body = json.dumps(value).encode()
        self.send_response(status)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def refused(self, path):
        if self.headers.get("X-Api-Key") != TOKEN:
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
        body = self.rfile.read(size)
        if self.refused("/api/briefing/action"):
            return
        action = json.loads(body)
        if action["type"] == "habit.toggle" and action["id"] in HABITS:
            done.symmetric_difference_update({action["id"]})
            self.answer(200, {"ok": True})
        else:
            self.answer(400, {"error": "This service cannot do that"})


print(f"http://127.0.0.1:{PORT}/api/briefing")
HTTPServer(("127.0.0.1", PORT), Service).serve_forever()
