"""What the plug-in needs around pdfhost on one machine: an account server on 127.0.0.1 that
publishes the service document, and the developers' file that points the task pane at the
reference page."""
import http.server
import json
import pathlib
import threading
from urllib.parse import quote

SERVICE_DOCUMENT = "txdfApi.json"
SIGN_UP_PAGE = b"""<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>Create an account</title></head>
<body style="font-family: sans-serif; max-width: 36em; margin: 2em auto">
<h1>Create an account</h1>
<p>This is the local account server of a development machine. It keeps one local user, who
already has an account: go back to the editor and choose Account &rsaquo; Sign in.</p>
</body></html>
"""


class AccountServer:
    """The account server on 127.0.0.1: it publishes the service document the plug-in asks for
    before it shows its page. The page's address comes from the developers' custom_url, so the
    template here only has to be accepted; the account domain is this server, where the local
    account holds its token."""

    def __init__(self):
        published = {}

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                name = self.path.split("?", 1)[0].rsplit("/", 1)[-1]
                if name == "signup":
                    body, kind = SIGN_UP_PAGE, "text/html; charset=utf-8"
                else:
                    found = name == SERVICE_DOCUMENT
                    body = published["document"] if found else b""
                    kind = "application/json"
                self.send_response(200 if body else 404)
                self.send_header("Content-Type", kind)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *args):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        published["document"] = json.dumps({
            "url": {
                "qvd_brevan_plugin_domain": "http://127.0.0.1/page?platform=%s",
                "qvd_domain": self.address,
            },
            "size": 2,
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


def write_profile(profile, page_url):
    """The developers' file of the plug-in in the host's user data: the page is the local
    reference page in automatic mode, and the network counts as reachable (the account server is
    local)."""
    folder = pathlib.Path(profile) / "userdata" / "sblm.io"
    folder.mkdir(parents=True, exist_ok=True)
    config = {"custom_url": page_url, "internet_connection": True}
    (folder / "brevan.config").write_text(json.dumps(config, indent=2) + "\n", encoding="utf-8")


def page_address(web_folder, auto, terms=""):
    """The reference page's file address; `auto` runs the whole job on each document unasked."""
    address = (web_folder / "index.html").resolve().as_uri()
    query = (["auto=1"] if auto else []) + (["terms=" + quote(terms)] if terms else [])
    return address + ("?" + "&".join(query) if query else "")
