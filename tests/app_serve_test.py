#!/usr/bin/env python3
"""rtcm2 serve over loopback. Usage: app_serve_test.py RTCM2 SAMPLES"""

import os
import re
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM, SAMPLES = sys.argv.pop(1), sys.argv.pop(1)
DEMO = f"{SAMPLES}/demo.rtcm2"
PATIENCE = 60    # seconds, on a machine that has other things to do


def convert(*arguments, stdin=b""):
    return subprocess.run([PROGRAM, "convert", *arguments], input=stdin, capture_output=True,
                          check=True).stdout


def rest_of(connection):
    return b"".join(iter(lambda: connection.recv(65536), b""))


class Serving:
    """The program, serving on a free port that it tells."""

    def __init__(self, *arguments, **environment):
        self.process = subprocess.Popen(
            [PROGRAM, "serve", "--tcp", "127.0.0.1:0", *arguments], stdin=subprocess.PIPE,
            stderr=subprocess.PIPE, env=os.environ | environment)
        self.port = int(re.search(rb"127\.0\.0\.1:(\d+)", self.process.stderr.readline())[1])

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.communicate()

    def connect(self, request="", room=None):
        connection = socket.socket()
        if room:
            connection.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, room)
        connection.settimeout(PATIENCE)
        connection.connect(("127.0.0.1", self.port))
        connection.sendall(request.replace("\n", "\r\n").encode())
        return connection

    def answer(self, request=""):
        """Everything that comes until the end."""
        with self.connect(request) as connection:
            return rest_of(connection)

    def told_until(self, text):
        told = b""
        while text not in told:
            line = self.process.stderr.readline()
            assert line, (text, told)
            told += line
        return told

    def end(self):
        """Exit status, and what was told."""
        told = self.process.communicate(timeout=PATIENCE)[1]
        return self.process.returncode, told


def unchunked(body):
    parts = []
    while not body.startswith(b"0\r\n\r\n"):
        size, body = body.split(b"\r\n", 1)
        parts.append(body[:int(size, 16)])
        assert body[int(size, 16):][:2] == b"\r\n"
        body = body[int(size, 16) + 2:]
    return b"".join(parts)


class ServeTest(unittest.TestCase):
    def test_clients_get_what_convert_writes(self):
        for options in [["--to", "stream"], ["--to", "hex", "--type", "3,16"], ["--to", "words"],
                        ["--to", "aivdm", "--mmsi", "2734450", "--position", "59.9,30.2"]]:
            with self.subTest(options), Serving(DEMO, "--speed", "max", *options) as serving:
                self.assertEqual(serving.answer(), convert(DEMO, *options))
                status, told = serving.end()
                self.assertEqual(status, 0)
                self.assertIn(b"to 1 client\n", told)

    def test_caster(self):
        stream = convert(DEMO, "--to", "stream")
        old, new = "User-Agent: NTRIP test\n", "Ntrip-Version: Ntrip/2.0\n"
        right = "Authorization: Basic bWU6c2VjcmV0\n"    # me:secret
        wrong = "Authorization: Basic bWU6bm90aGluZw==\n"
        with Serving(DEMO, "--speed", "max", "--ntrip-mount", "DEMO", "--user", "me",
                     "--loop", "--max", "50", RTCM2_NTRIP_PASSWORD="secret") as serving:
            row = "STR;DEMO;DEMO;RTCM 2;1(4),3(60),16(60),"
            for request, beginning, inside in [
                    (f"GET / HTTP/1.0\n{old}\n", "SOURCETABLE 200 OK\r\n", row),
                    (f"GET / HTTP/1.1\n{new}\n", "HTTP/1.1 200 OK\r\n", row),
                    (f"GET /OTHER HTTP/1.0\n{old}\n", "SOURCETABLE 200 OK\r\n", row),
                    (f"GET /OTHER HTTP/1.1\n{new}\n", "HTTP/1.1 404 ", ""),
                    (f"GET /DEMO HTTP/1.0\n{old}\n", "HTTP/1.0 401 ", "WWW-Authenticate: Basic"),
                    (f"GET /DEMO HTTP/1.1\n{new}{wrong}\n", "HTTP/1.1 401 ", "WWW-Authenticate"),
                    (f"POST /DEMO HTTP/1.1\n{new}{right}\n", "HTTP/1.1 405 ", "Allow: GET"),
                    ("\x01\x02 what?\n\n", "HTTP/1.0 400 ", ""),
                    ("GET /" + "x" * 9000, "HTTP/1.0 400 ", "")]:
                with self.subTest(request[:40]):
                    answer = serving.answer(request).decode()
                    self.assertEqual(answer[:len(beginning)], beginning)
                    self.assertIn(inside, answer)
                    self.assertEqual("SOURCETABLE\r\n" in answer[-20:], inside == row)
            self.assertIsNone(serving.process.poll())

        for request, head in [(f"GET /DEMO HTTP/1.0\n{old}{right}\n", b"ICY 200 OK"),
                              (f"GET /DEMO?a=b HTTP/1.1\n{new}{right}\n", b"HTTP/1.1 200 OK")]:
            with self.subTest(head), Serving(
                    DEMO, "--speed", "max", "--ntrip-mount", "DEMO", "--user", "me",
                    RTCM2_NTRIP_PASSWORD="secret") as serving:
                got, body = serving.answer(request).split(b"\r\n\r\n", 1)
                self.assertEqual(got[:len(head)], head)
                self.assertEqual(unchunked(body) if b"chunked" in got else body, stream)
                self.assertEqual(b"chunked" in got, b"HTTP" in head)

    def test_pace_and_late_client(self):
        # 3 minutes of messages. A late client begins with a message, and misses some.
        with Serving(DEMO, "--speed", "60") as serving, serving.connect() as first:
            begun = time.monotonic()
            got = b""
            while len(got) < 400:
                got += first.recv(65536)
            late = serving.answer()
            got += rest_of(first)
            taken = time.monotonic() - begun
        self.assertEqual(got, convert(DEMO, "--to", "stream"))
        self.assertEqual(late, convert("-", "--to", "stream", stdin=late))
        everything, rest = [convert("-", "--to", "hex", stdin=each) for each in (got, late)]
        self.assertTrue(everything.endswith(rest) and 0 < len(rest) < len(everything), rest)
        self.assertGreater(taken, 175.8 / 60 - 0.3)

    def test_pace_of_receipt(self):
        lines = convert(DEMO, "--to", "hex").splitlines()[:3]
        with tempfile.NamedTemporaryFile() as file:
            for second, line in zip([0, 1, 5], lines):
                file.write(b"2026-11-23T14:00:%02dZ %s\n" % (second, line))
            file.flush()
            with Serving(file.name, "--speed", "4", "--to", "hex") as serving:
                begun = time.monotonic()
                self.assertEqual(serving.answer().splitlines(), lines)
                self.assertGreater(time.monotonic() - begun, 5 / 4 - 0.3)

    def test_odd_times(self):
        lines = convert(DEMO, "--to", "hex").splitlines(keepends=True)
        for order, told in [(lines[:3] + lines[80:83], b"message 4: a pause of 132.6 s before it"),
                            (lines[80:83] + lines[:3], b"message 5: the time goes back by 140.4 s")]:
            with self.subTest(told), tempfile.NamedTemporaryFile() as file:
                file.write(b"".join(order))
                file.flush()
                with Serving(file.name, "--speed", "20", "--at-once") as serving:
                    status, all_told = serving.end()
                self.assertEqual(status, 0)
                self.assertIn(told, all_told)

    def test_slow_client_does_not_hold_up_others(self):
        with Serving(DEMO, "--speed", "1000000", "--loop", "-n", "30") as serving:
            with serving.connect(room=4096), serving.connect() as fast:
                got = 0
                while got < 3 << 20:
                    got += len(fast.recv(1 << 20))
            self.assertIn(b"dropped: it does not take", serving.told_until(b"dropped"))
            serving.process.send_signal(signal.SIGINT)
            self.assertEqual(serving.end()[0], 130)

    def test_client_that_talks_gets_the_end(self):
        with Serving(DEMO, "--speed", "max") as serving, serving.connect() as client:
            got = b""
            while piece := client.recv(1000):
                got += piece
                client.sendall(b"$GPGGA,its position\r\n")
                time.sleep(0.002)
        self.assertEqual(got, convert(DEMO, "--to", "stream"))

    def test_relay_and_interrupt(self):
        stream = convert(DEMO, "--to", "stream")
        with Serving("-") as serving, serving.connect() as client:
            serving.told_until(b"connected")
            serving.process.stdin.write(stream)
            serving.process.stdin.flush()
            got = b""
            while len(got) < len(stream) // 2:    # though the input has not ended
                got += client.recv(65536)
            self.assertTrue(stream.startswith(got))
            serving.process.send_signal(signal.SIGINT)
            status, told = serving.end()
            self.assertEqual(status, 130)
            self.assertIn(b"played ", told)

    def test_refusals(self):
        with Serving(DEMO) as serving:
            busy = f"127.0.0.1:{serving.port}"
            for arguments, status, reason in [
                    ([DEMO], 2, "--tcp has to say"),
                    (["--tcp", "here:x", DEMO], 2, "is no address to serve at"),
                    (["--tcp", ":0", "--loop", "-"], 2, "does not come a second time"),
                    (["--ntrip-mount", "A", "--user", "me", DEMO], 2, "RTCM2_NTRIP_PASSWORD"),
                    (["--tcp", ":0", f"{SAMPLES}/none"], 3, "cannot read"),
                    (["--tcp", ":0", "--type", "18", DEMO], 1, "none of the messages"),
                    (["--tcp", busy, DEMO], 4, "in use")]:
                with self.subTest(reason):
                    run = subprocess.run([PROGRAM, "serve", *arguments], capture_output=True,
                                         text=True, timeout=PATIENCE, stdin=subprocess.DEVNULL)
                    self.assertEqual(run.returncode, status, run.stderr)
                    self.assertIn(reason, run.stderr)


if __name__ == "__main__":
    unittest.main()
