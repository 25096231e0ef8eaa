#!/usr/bin/python3 -Xutf8
"""An SMTP server that has a bad day: it takes most messages, and refuses, drops or stalls at every stage now and then.

Usage: server.py JOURNAL RATE SEED

RATE is the chance of each fault at its stage. JOURNAL gets a line for each message the moment it is taken: the recipient,
and the fault that keeps the answer from the client, if any. "READY <port>" on standard output says that it listens; at
SIGTERM the last line is a JSON object: how often each fault was played, and how many connections came.
"""

import asyncio
import collections
import json
import random
import signal
import socket
import sys

from aiosmtpd.smtp import SMTP

NEVER = 3600


class Day:
    """What the server does, told beforehand by the seed and counted."""

    def __init__(self, journal, rate, seed):
        self.journal = open(journal, "w", encoding="ascii", buffering=1)
        self.rate = rate
        self.random = random.Random(seed)
        self.counts = collections.Counter()

    def fault(self, stage, *kinds):
        """One of the kinds, or none; each is as likely as every other fault."""
        number = int(self.random.random() / self.rate)
        if number >= len(kinds):
            return None
        self.counts[f"{stage} {kinds[number]}"] += 1
        return kinds[number]


class Handler:
    async def handle_EHLO(self, server, session, envelope, hostname, responses):
        session.host_name = hostname
        return ["250-mail.example.test", "250-PIPELINING", "250 8BITMIME"]


class Server(SMTP):
    day = None

    def connection_made(self, transport):
        self.day.counts["connections"] += 1
        if self.day.fault("connection", "drop"):
            transport.abort()
        super().connection_made(transport)

    async def _misbehave(self, kind):
        """Plays the fault; does not come back unless the answer was the fault."""
        if kind[0].isdigit():
            await self.push(kind)
            if kind.startswith("421"):
                self.transport.close()
            return
        if kind == "drop":
            self.transport.abort()
        await asyncio.sleep(NEVER)  # the end of the connection ends it

    async def smtp_EHLO(self, arg):
        kind = self.day.fault("EHLO", "drop")
        await (self._misbehave(kind) if kind else super().smtp_EHLO(arg))

    async def smtp_MAIL(self, arg):
        kind = self.day.fault("MAIL", "451 4.3.0 Riprovare", "550 5.1.8 Mittente rifiutato", "421 4.3.2 Chiudo",
                              "drop", "stall")
        await (self._misbehave(kind) if kind else super().smtp_MAIL(arg))

    async def smtp_RCPT(self, arg):
        kind = self.day.fault("RCPT", "452 4.2.2 Casella piena", "550 5.1.1 Casella inesistente", "421 4.3.2 Chiudo",
                              "drop", "stall")
        await (self._misbehave(kind) if kind else super().smtp_RCPT(arg))

    async def smtp_RSET(self, arg):
        kind = self.day.fault("RSET", "502 5.5.1 Non conosco", "drop")
        await (self._misbehave(kind) if kind else super().smtp_RSET(arg))

    async def smtp_DATA(self, arg):
        kind = self.day.fault("DATA", "451 4.3.0 Riprovare", "drop", "stall", "354 drop")
        if kind == "354 drop":
            await self.push("354 Avanti")
            await self._misbehave("drop")
        await (self._misbehave(kind) if kind else super().smtp_DATA(arg))


async def take(server, session, envelope):
    """The end of a message: whatever is decided, the journal knows it before the client does."""
    day = server.day
    kind = day.fault("message", "554 5.7.1 Contenuto rifiutato", "drop", "stall", "taken and drop", "taken and stall")
    if kind and kind.startswith("554"):
        return kind
    recipient = envelope.rcpt_tos[0]
    if kind in ("drop", "stall"):
        await server._misbehave(kind)
    day.journal.write(f"{recipient} {kind or ''}\n")
    if kind:
        await server._misbehave(kind.split()[-1])
    leave = day.fault("idle", "421 4.4.2 Troppo tempo", "drop")
    if leave:
        asyncio.get_running_loop().call_later(0.002, leave_connection, server, leave)
    return "250 2.0.0 Ok"


def leave_connection(server, leave):
    if server.transport is None:
        return
    if leave != "drop":
        server.transport.write(leave.encode() + b"\r\n")
    server.transport.close()


Handler.handle_DATA = staticmethod(take)


async def serve(day):
    Server.day = day
    listener = socket.create_server(("127.0.0.1", 0))
    server = await asyncio.get_running_loop().create_server(
        lambda: Server(Handler(), hostname="mail.example.test", loop=asyncio.get_running_loop()), sock=listener)
    stopped = asyncio.Event()
    asyncio.get_running_loop().add_signal_handler(signal.SIGTERM, stopped.set)
    print("READY", listener.getsockname()[1], flush=True)
    await stopped.wait()
    server.close()
    print(json.dumps(day.counts, sort_keys=True), flush=True)


if __name__ == "__main__":
    asyncio.run(serve(Day(sys.argv[1], float(sys.argv[2]), int(sys.argv[3]))))
