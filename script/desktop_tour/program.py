"""The program in a session, with made-up data from a service of its own."""

from .session import wait_until

TOKEN = "a-token"


class Program:
    """Started and ended as often as is wanted; follows its preferences while it runs."""

    def __init__(self, session, path, preferences):
        self.session, self.path, self.process = session, path, None
        self.preferences = {"toldOfNoStatusArea": "true", **preferences}
        session.store_token(TOKEN)
        self.start_service()

    def start_service(self):
        answer = self.session.config / "service"
        service = self.path.with_name("lumora-demo-service")
        self.session.start("service", "sh", "-c", 'exec "$0" --token "$1" >"$2"',
                           str(service), TOKEN, str(answer))

        def lines():
            words = answer.read_text().split() if answer.exists() else []
            return words if len(words) > 3 else None  # "endpoint", it, "token", it

        if not (found := wait_until(lines)):
            raise RuntimeError("the service did not start")
        self.preferences["endpointURL"] = found[1]
        self.prefer()

    def prefer(self, **others):
        """Writes the preferences, and others beside them; without any it takes those back."""
        lines = (f"{name}={value}\n" for name, value in (self.preferences | others).items())
        self.session.write("lumora/lumora.conf", "[General]\n" + "".join(lines))

    def start(self):
        self.process = self.session.start("lumora", str(self.path), **self.session.inside)

    def is_ready(self):
        """Whether it answers."""
        return bool(self.session.run(str(self.path), "status"))

    def end(self):
        """As its users do."""
        self.session.run(str(self.path), "quit")
        self.session.end(self.process)
