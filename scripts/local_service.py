"""What the plug-in needs around pdfhost on one machine: an account server on 127.0.0.1 that
publishes the service document, and the developers' file that points the task pane at the
reference page."""
import datetime
import http.server
import json
import pathlib
import secrets
import threading
from urllib.parse import parse_qs, quote

SERVICE_DOCUMENT = "txdfApi.json"
USER_TOKEN_PATH = "/api/v1/user/jwt"
USAGE_PATH = "/api/v1/usage"
REPORT_PATH = "/api/v1/usage/redactions"
SIGN_UP_PAGE = b"""<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>Create an account</title></head>
<body style="font-family: sans-serif; max-width: 36em; margin: 2em auto">
<h1>Create an account</h1>
<p>This is the local account server of a development machine. It keeps one local user, who
already has an account: go back to the editor and choose Account &rsaquo; Sign in.</p>
</body></html>
"""


class UsageCounts:
    """What the service counts for each account, by month: documents and findings redacted. The
    account is known by the token the editor holds for it; the page reaches the API with a
    short-lived service token that the token request gave for it. With a file, the counts
    outlive the server."""

    def __init__(self, file=None):
        self.file = pathlib.Path(file) if file else None
        self.lock = threading.Lock()
        self.service_tokens = {}  # service token -> account token
        self.counts = {}  # account token -> {month: {"documents": n, "findings": n}}
        if self.file and self.file.is_file():
            try:
                stored = json.loads(self.file.read_text(encoding="utf-8"))
                if isinstance(stored, dict):
                    self.counts = stored
            except (OSError, ValueError):
                pass

    def service_token(self, account_token):
        with self.lock:
            token = secrets.token_hex(16)
            self.service_tokens[token] = account_token
            return token

    def account_of(self, service_token):
        with self.lock:
            return self.service_tokens.get(service_token)

    def usage(self, account, month):
        with self.lock:
            counts = self.counts.get(account, {}).get(month, {})
            return {"month": month, "documentsRedacted": counts.get("documents", 0),
                    "findingsRedacted": counts.get("findings", 0)}

    def add(self, account, month, documents, findings):
        with self.lock:
            counts = self.counts.setdefault(account, {}).setdefault(month, {})
            counts["documents"] = counts.get("documents", 0) + documents
            counts["findings"] = counts.get("findings", 0) + findings
            if self.file:
                temporary = self.file.with_suffix(".tmp")
                temporary.write_text(json.dumps(self.counts), encoding="utf-8")
                temporary.replace(self.file)


def _count(value, most):
    """A count from a request: an integer from 0 to `most`, else None."""
    return value if type(value) is int and 0 <= value <= most else None


class AccountServer:
    """The account server on 127.0.0.1: it publishes the service document the plug-in asks for
    before it shows its page, a sign-up page, the token request of the plug-in's getUserJWT, and
    the usage API that the page asks with that token. The page's address comes from the
    developers' custom_url, so the template here only has to be accepted; the account domain is
    this server, where the local account holds its token. `counts_file` keeps the usage counts."""

    def __init__(self, counts_file=None):
        published = {}
        counts = UsageCounts(counts_file)
        self.counts = counts

        class Handler(http.server.BaseHTTPRequestHandler):
            def answer(self, status, body=b"", kind="application/json"):
                self.send_response(status)
                # The page is opened from a file, so its requests come from another origin.
                self.send_header("Access-Control-Allow-Origin", "*")
                self.send_header("Content-Type", kind)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def answer_json(self, status, value):
                self.answer(status, json.dumps(value).encode())

            def account(self):
                """The account whose service token authorises the request, or None."""
                header = self.headers.get("Authorization", "")
                return counts.account_of(header[7:]) if header.startswith("Bearer ") else None

            def do_OPTIONS(self):
                self.send_response(204)
                self.send_header("Access-Control-Allow-Origin", "*")
                self.send_header("Access-Control-Allow-Methods", "GET, POST, OPTIONS")
                self.send_header("Access-Control-Allow-Headers", "Authorization, Content-Type")
                self.send_header("Access-Control-Max-Age", "600")
                self.send_header("Content-Length", "0")
                self.end_headers()

            def do_GET(self):
                path, _, query = self.path.partition("?")
                name = path.rsplit("/", 1)[-1]
                if path == USER_TOKEN_PATH:
                    account_token = parse_qs(query).get("token", [""])[0]
                    if not account_token:
                        return self.answer_json(200, {"ret": 401, "message": "no account token"})
                    token = counts.service_token(account_token)
                    return self.answer_json(200, {"ret": 0, "data": {"jwtResult": token}})
                if path == USAGE_PATH:
                    account = self.account()
                    if account is None:
                        return self.answer_json(401, {"ret": 401, "message": "sign in again"})
                    return self.answer_json(200, {"ret": 0, "data": counts.usage(account, _month())})
                if name == "signup":
                    return self.answer(200, SIGN_UP_PAGE, "text/html; charset=utf-8")
                found = name == SERVICE_DOCUMENT
                self.answer(200 if found else 404, published["document"] if found else b"")

            def do_POST(self):
                if self.path != REPORT_PATH:
                    return self.answer(404)
                account = self.account()
                if account is None:
                    return self.answer_json(401, {"ret": 401, "message": "sign in again"})
                length = self.headers.get("Content-Length", "")
                length = _count(int(length), 4096) if length.isdigit() else None
                try:
                    report = json.loads(self.rfile.read(length)) if length else None
                except ValueError:
                    report = None
                documents = _count(report.get("documents"), 1) if isinstance(report, dict) else None
                findings = _count(report.get("findings"), 10**7) if isinstance(report, dict) else None
                if documents is None or findings is None:
                    return self.answer_json(400, {"ret": 400, "message": "not a redaction report"})
                counts.add(account, _month(), documents, findings)
                self.answer_json(200, {"ret": 0, "data": counts.usage(account, _month())})

            def log_message(self, *args):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        published["document"] = json.dumps({
            "url": {
                "qvd_brevan_plugin_domain": "http://127.0.0.1/page?platform=%s",
                "qvd_domain": self.address,
                "qvd_brevan_domain": self.address,
                "qvd_brevan_user_jwt": self.address + USER_TOKEN_PATH + "?token=%s%s",
            },
            "size": 4,
            "dsvConfig": {},
        }).encode()
        self.thread = threading.Thread(target=self.server.serve_forever, daemon=True)
        self.thread.start()

    @property
    def address(self):
        return "http://127.0.0.1:%d" % self.server.server_address[1]

    def close(self):
        self.server.shutdown()
        self.server.server_close()


def _month():
    return datetime.date.today().strftime("%Y-%m")


def write_profile(profile, page_url):
    """The developers' file of the plug-in in the host's user data: the page is the local
    reference page in automatic mode, and the network counts as reachable (the account server is
    local)."""
    folder = pathlib.Path(profile) / "userdata" / "sblm.io"
    folder.mkdir(parents=True, exist_ok=True)
    config = {"custom_url": page_url, "internet_connection": True}
    (folder / "brevan.config").write_text(json.dumps(config, indent=2) + "\n", encoding="utf-8")


def page_address(web_folder, auto, terms="", service=""):
    """The reference page's file address; `auto` runs the whole job on each document unasked;
    `service` is the service's address, which the editor gives the page as ai_domain."""
    address = (web_folder / "index.html").resolve().as_uri()
    query = (["auto=1"] if auto else []) + (["terms=" + quote(terms)] if terms else [])
    query += ["ai_domain=" + quote(service, safe=":/")] if service else []
    return address + ("?" + "&".join(query) if query else "")
