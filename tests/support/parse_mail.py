#!/usr/bin/python3
"""Reads a message with Python's email package and says what a mail reader would see.

Usage: parse_mail.py MESSAGE DIRECTORY. Prints lines of a key and values joined by tabs, with \\\\, \\t, \\n and \\r
escaped: header NAME VALUE, from/to/cc NAME ADDRESS, subject, date (seconds since 1970 and the zone), type, body,
attachment NAME TYPE FILE, defect. The attachments' bytes lie in DIRECTORY.
"""

import email.policy
import os
import sys
from email.parser import BytesParser


def escape(text):
    return text.replace("\\", "\\\\").replace("\t", "\\t").replace("\n", "\\n").replace("\r", "\\r")


def say(*words):
    sys.stdout.buffer.write(("\t".join(escape(word) for word in words) + "\n").encode("utf-8", "surrogateescape"))


def report_defects(part):
    for defect in part.defects:
        say("defect", repr(defect))
    for name, value in part.items():
        for defect in value.defects:
            say("defect", "%s: %r" % (name, defect))


def main(path, directory):
    with open(path, "rb") as file:
        message = BytesParser(policy=email.policy.SMTP).parse(file)
    for part in message.walk():
        report_defects(part)
    for name, value in message.items():
        say("header", name, str(value))
    for name in ("from", "to", "cc"):
        for address in message[name].addresses if message[name] else ():
            say(name, address.display_name, address.addr_spec)
    say("subject", str(message["subject"]))
    if message["date"]:
        say("date", str(int(message["date"].datetime.timestamp())), message["date"].datetime.strftime("%z"))
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
