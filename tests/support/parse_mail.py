#!/usr/bin/python3 -Xutf8
"""Reads a message with Python's email package and says what a mail reader would see.

Usage: parse_mail.py MESSAGE DIRECTORY. Prints lines of a key and values joined by tabs, with backslash, tab and line
ends escaped: header NAME VALUE, from/to/cc NAME ADDRESS, subject, date (seconds since 1970 and the zone), type, body,
attachment NAME TYPE FILE, defect. The attachments' bytes lie in DIRECTORY.
"""

import email
import email.policy
import functools
import os
import sys
from email.header import decode_header, make_header
from email.utils import getaddresses, parsedate_to_datetime

# The package's modern header parser takes hours for a header of a megabyte; its older one stands in there.
LONGEST_FOR_MODERN = 20000


def escape(text):
    return text.replace("\\", "\\\\").replace("\t", "\\t").replace("\n", "\\n").replace("\r", "\\r")


def say(*words):
    sys.stdout.buffer.write(("\t".join(escape(word) for word in words) + "\n").encode("utf-8", "surrogateescape"))


def say_modern_headers(message):
    for part in message.walk():
        for defect in part.defects:
            say("defect", repr(defect))
        for name, value in part.items():
            for defect in value.defects:
                say("defect", "%s: %r" % (name, defect))
    for name, value in message.items():
        say("header", name, str(value))
    for name in ("from", "to", "cc"):
        for address in message[name].addresses if message[name] else ():
            say(name, address.display_name, address.addr_spec)
    say("subject", str(message["subject"]))


@functools.lru_cache(maxsize=None)
def decoded(text):
    return str(make_header(decode_header(text.replace("\r\n", ""))))


def say_long_headers(message):
    for defect in message.defects:
        say("defect", repr(defect))
    for name, value in message.items():
        say("header", name, decoded(value))
    for name in ("from", "to", "cc"):
        for display, address in getaddresses([message.get(name, "").replace("\r\n", "")]):
            if address:
                say(name, decoded(display), address)
    say("subject", decoded(message["subject"]))


def main(path, directory):
    with open(path, "rb") as file:
        content = file.read()
    message = email.message_from_bytes(content, policy=email.policy.SMTP)
    plain = email.message_from_bytes(content, policy=email.policy.compat32)
    if sum(len(str(value)) for value in plain.values()) <= LONGEST_FOR_MODERN:
        say_modern_headers(message)
    else:
        say_long_headers(plain)
    date = parsedate_to_datetime(plain["date"])
    say("date", str(int(date.timestamp())), date.strftime("%z"))
    body = message.get_body(("plain", "html"))
    say("type", body.get_content_type(), body.get_content_charset() or "")
    say("body", body.get_payload(decode=True).decode("utf-8"))
    for number, part in enumerate(message.iter_attachments() if message.is_multipart() else ()):
        file = os.path.join(directory, "attachment-%d" % number)
        with open(file, "wb") as output:
            output.write(part.get_payload(decode=True))
        say("attachment", part.get_filename() or "", part.get_content_type(), file)


if __name__ == "__main__":
    main(*sys.argv[1:])
