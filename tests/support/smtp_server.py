#!/usr/bin/python3 -Xutf8
"""An SMTP server for tests and demonstrations: takes messages and stores them as files.

Each message becomes DIRECTORY/NNNN.eml (its bytes as they came) and DIRECTORY/NNNN.env (lines of a key and a value:
from, to, mail-options, rcpt-options, helo, tls, user, and the client's port). "READY <port>" on standard output says that
it listens. SIGUSR1 closes the open connections; a file "dropped" says when the clients can see it.
"""

import argparse
import asyncio
import base64
import hashlib
import hmac
import os
import random
import secrets
import signal
import socket
import ssl
import sys
import warnings

from aiosmtpd.smtp import SMTP, AuthResult, auth_mechanism

warnings.filterwarnings("ignore")


class Handler:
    def __init__(self, options):
        self.options = options
        self.count = 0

    async def hold(self):
        """Says that it waits, and waits until somebody lets it go on."""
        released = os.path.join(self.options.directory, "release")
        if os.path.exists(released):
            return
        open(os.path.join(self.options.directory, "held"), "w").close()
        while not os.path.exists(released):
            await asyncio.sleep(0.02)

    async def handle_EHLO(self, server, session, envelope, hostname, responses):
        session.host_name = hostname
        offered = []
        for line in responses:
            if line[4:].startswith("AUTH "):
                if self.options.auth:
                    offered.append("250-AUTH " + " ".join(self.options.auth))
            elif not (line[4:] == "HELP" or line[4:].startswith("8BITMIME")):
                offered.append(line)
        offered += ["250-" + word for word in self.options.extension]
        offered.append("250 8BITMIME")
        return offered

    async def handle_RCPT(self, server, session, envelope, address, options):
        if address.lower() in self.options.refuse:
            return "550 5.1.1 Casella inesistente"
        envelope.rcpt_tos.append(address)
        return "250 2.1.5 Ok"

    async def handle_DATA(self, server, session, envelope):
        self.count += 1
        base = os.path.join(self.options.directory, "%04d" % self.count)
        lines = [("from", envelope.mail_from)]
        lines += [("to", address) for address in envelope.rcpt_tos]
        lines += [("mail-options", server.seen_mail), ("helo", session.host_name)]
        lines += [("rcpt-options", options) for options in server.seen_rcpt]
        lines += [("tls", "yes" if server.transport.get_extra_info("sslcontext") else "no")]
        user = getattr(session.auth_data, "login", session.auth_data)
        if isinstance(user, bytes):
            user = user.decode()
        lines += [("user", user or ""), ("port", session.peer[1])]
        with open(base + ".tmp", "w", encoding="utf-8") as file:
            file.writelines("%s %s\n" % line for line in lines)
        with open(base + ".eml", "wb") as file:
            file.write(envelope.original_content)
        os.rename(base + ".tmp", base + ".env")
        if self.count == self.options.hold_after:
            await self.hold()
        return "250 2.0.0 Ok"


class Credentials(str):
    """What a mechanism of our own leaves in the session: the user's name."""

    @property
    def login(self):
        return self.encode()


class Server(SMTP):
    """aiosmtpd's server with delivery notifications, CRAM-MD5, XOAUTH2 and a few ways to misbehave."""

    command_size_limit = 4096
    connected = set()

    def __init__(self, handler, options, **rest):
        self.options = options
        self.seen_mail = ""
        self.seen_rcpt = []
        self.received_bytes = 0
        super().__init__(handler, **rest)

    def connection_made(self, transport):
        super().connection_made(transport)
        self.connected.add(self)

    def connection_lost(self, error):
        super().connection_lost(error)
        self.connected.discard(self)

    @classmethod
    async def drop_all(cls, directory):
        for server in list(cls.connected):
            server.transport.close()
        await asyncio.sleep(0.01)  # what they had to say has left by then; under TLS they also wait for an answer
        open(os.path.join(directory, "dropped"), "w").close()

    def data_received(self, data):
        self.received_bytes += len(data)
        if 0 < self.options.abort_after < self.received_bytes:
            self.transport.abort()
            return
        super().data_received(data)

    @staticmethod
    def _split(argument, known):
        """Takes those parameters out of a command's argument that we know in addition to the base class."""
        words = (argument or "").split(" ")
        taken = [w for w in words[1:] if w.split("=")[0].upper() in known]
        return " ".join([words[0]] + [w for w in words[1:] if w not in taken]), " ".join(taken)

    async def smtp_MAIL(self, arg):
        dsn = ("RET", "ENVID") if "DSN" in self.options.extension else ()
        self.seen_rcpt = []
        rest, taken = self._split(arg, dsn)
        self.seen_mail = " ".join((arg or "").split(" ")[1:])
        await super().smtp_MAIL(rest)

    async def smtp_RCPT(self, arg):
        dsn = ("NOTIFY", "ORCPT") if "DSN" in self.options.extension else ()
        rest, taken = self._split(arg, dsn)
        self.seen_rcpt.append(taken)
        await super().smtp_RCPT(rest)

    async def smtp_DATA(self, arg):
        if self.options.close_at_data:
            await self.push("354 Avanti")
            self.transport.close()
            return
        if self.event_handler.count + 1 == self.options.hold_before:
            await self.event_handler.hold()
        await super().smtp_DATA(arg)

    def _judge(self, user, good):
        if user == self.options.user and good:
            return AuthResult(success=True, auth_data=Credentials(user))
        return AuthResult(success=False, handled=False)

    @auth_mechanism("CRAM-MD5")
    async def auth_CRAM_MD5(self, server, args):
        challenge = ("<%s@%s>" % (secrets.token_hex(8), self.hostname)).encode()
        answer = await self.challenge_auth(challenge)
        user, _, digest = answer.decode().rpartition(" ")
        wanted = hmac.new(self.options.password.encode(), challenge, hashlib.md5).hexdigest()
        return self._judge(user, hmac.compare_digest(digest, wanted))

    @auth_mechanism("XOAUTH2")
    async def auth_XOAUTH2(self, server, args):
        blob = base64.b64decode(args[1]) if len(args) > 1 else await self.challenge_auth("")
        fields = dict(f.split("=", 1) for f in blob.decode().split("\1") if "=" in f)
        good = fields.get("auth") == "Bearer " + self.options.password
        if not good:
            await self.challenge_auth('{"status":"400"}')
        return self._judge(fields.get("user", ""), good)


def authenticator(options):
    def check(server, session, envelope, mechanism, data):
        good = (data.login, data.password) == (options.user.encode(), options.password.encode())
        return AuthResult(success=good, handled=False, auth_data=data if good else None)

    return check


def listen(low_port):
    """A socket on a free port; with low_port on one that fits a signed 16-bit number."""
    for _ in range(200):
        listener = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
        try:
            listener.bind(("127.0.0.1", random.randrange(10000, 32767) if low_port else 0))
            listener.listen()  # here, since two servers may be given one port until one of them listens
            return listener
        except OSError:
            listener.close()
    sys.exit("no free port")


def parse_options():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--directory", required=True, help="where messages are laid down")
    parser.add_argument("--port", type=int, default=0, help="0: a free one")
    parser.add_argument("--low-port", action="store_true", help="choose a free port below 32768")
    parser.add_argument("--tls", choices=("none", "starttls", "implicit"), default="none")
    parser.add_argument("--certificate")
    parser.add_argument("--key")
    parser.add_argument("--require-tls", action="store_true", help="refuse mail before STARTTLS")
    parser.add_argument("--auth", type=lambda text: text.split(","), default=[], help="mechanisms, joined by commas")
    parser.add_argument("--user", default="")
    parser.add_argument("--password", default="")
    parser.add_argument("--require-auth", action="store_true", help="refuse mail before AUTH")
    parser.add_argument("--refuse", action="append", default=[], type=str.lower, help="an address that is refused")
    parser.add_argument("--extension", action="append", default=[], help="a further word for the EHLO reply")
    parser.add_argument("--smtputf8", action="store_true")
    parser.add_argument("--size-limit", type=int, default=0)
    parser.add_argument("--abort-after", type=int, default=0, help="break connections after so many bytes")
    parser.add_argument("--close-at-data", action="store_true", help="close connections instead of reading a message")
    parser.add_argument("--hold-before", type=int, default=0, help="wait before the message of this number is read")
    parser.add_argument("--hold-after", type=int, default=0, help="wait before the message of this number, taken and "
                        "laid down, is answered")
    return parser.parse_args()


async def serve(options):
    context = None
    if options.tls != "none":
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(options.certificate, options.key)

    def make():
        return Server(
            Handler_instance, options,
            hostname="mail.example.test",
            data_size_limit=options.size_limit or None,
            enable_SMTPUTF8=options.smtputf8,
            tls_context=context if options.tls == "starttls" else None,
            require_starttls=options.require_tls,
            auth_required=options.require_auth,
            auth_require_tls=False,
            auth_exclude_mechanism=[m for m in ("PLAIN", "LOGIN", "CRAM-MD5", "XOAUTH2") if m not in options.auth],
            authenticator=authenticator(options),
            loop=asyncio.get_running_loop())

    Handler_instance = Handler(options)
    if options.port:
        listener = socket.create_server(("127.0.0.1", options.port))
    else:
        listener = listen(options.low_port)
    server = await asyncio.get_running_loop().create_server(
        make, sock=listener, ssl=context if options.tls == "implicit" else None)
    stopped = asyncio.Event()
    asyncio.get_running_loop().add_signal_handler(signal.SIGTERM, stopped.set)
    asyncio.get_running_loop().add_signal_handler(
        signal.SIGUSR1, lambda: asyncio.get_running_loop().create_task(Server.drop_all(options.directory)))
    print("READY", listener.getsockname()[1], flush=True)
    await stopped.wait()
    server.close()


if __name__ == "__main__":
    asyncio.run(serve(parse_options()))
