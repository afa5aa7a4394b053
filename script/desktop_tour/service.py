"""A dashboard service with one meeting, which runs for as long as anybody looks."""
import http.server
import json
import threading
import time


def iso(seconds):
    return time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(seconds))


class MeetingService:
    """Serves a briefing whose label is the title, on this machine, until it is stopped."""

    def __init__(self):
        self.title = ""
        service = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                body = service.briefing()
                self.send_response(200)
                self.send_header("Content-Type", "application/json")
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.endpoint = f"http://127.0.0.1:{self.server.server_port}/api/briefing"
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def briefing(self):
        now = time.time()
        meeting = {"title": self.title, "start": iso(now - 600), "end": iso(now + 3600),
                   "allDay": False}
        return json.dumps({
            "date": iso(now)[:10],
            "generatedAt": now,
            "eventsToday": [meeting],
            "chores": {"count": 0, "top": []},
            "habits": {"done": 0, "total": 0, "items": []},
            "focus": {},
        }).encode()

    def stop(self):
        self.server.shutdown()
        self.server.server_close()
