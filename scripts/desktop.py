#!/usr/bin/env python3
"""pdfhost's desktop window with the plug-in and the reference page in its task pane: starts the
local account server, points the plug-in at the page, and runs pdfhost until its window closes.
Press Protect > Sable Mark > Auto Redaction, sign in (the server is filled in), review, apply."""
import argparse
import pathlib
import subprocess
import sys

from local_service import AccountServer, page_address, write_profile


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--pdfhost", required=True)
    parser.add_argument("--plugins", required=True)
    parser.add_argument("--web", required=True, help="the reference page's folder")
    parser.add_argument("--profile", required=True, help="pdfhost's profile folder, kept")
    parser.add_argument("files", nargs="*")
    args = parser.parse_args()

    profile = pathlib.Path(args.profile).resolve()
    server = AccountServer(profile / "account_server_usage.json")
    try:
        write_profile(profile, page_address(pathlib.Path(args.web), False, service=server.address))
        return subprocess.call([args.pdfhost, "--profile", str(profile), "--plugins", args.plugins,
                                "--account-server", server.address] + args.files)
    finally:
        server.close()


if __name__ == "__main__":
    sys.exit(main())
