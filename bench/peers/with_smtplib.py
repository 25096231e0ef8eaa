"""Builds and sends messages with Python's email and smtplib over one connection.

Arguments: PORT MESSAGES BODY-BYTES CA ATTACHMENT; the last two may be empty.
"""

import smtplib
import ssl
import sys
from email.message import EmailMessage
from pathlib import Path

port, messages, size, ca, attachment = sys.argv[1:]
body = ("x" * 70 + "\n") * (int(size) // 71)
hello = {"local_hostname": "bench.example"}
if ca:
    client = smtplib.SMTP_SSL("127.0.0.1", int(port), context=ssl.create_default_context(cafile=ca), **hello)
else:
    client = smtplib.SMTP("127.0.0.1", int(port), **hello)
with client:
    for _ in range(int(messages)):
        message = EmailMessage()
        message["From"] = "Azienda S.p.A. <fatture@azienda.example>"
        message["To"] = "Ferramenta Bianchi S.r.l. <ordini@bianchi.example>"
        message["Subject"] = "Fattura n. 123 del 14/11/2026"
        message.set_content(body)
        if attachment:
            content = Path(attachment).read_bytes()
            message.add_attachment(content, maintype="application", subtype="octet-stream", filename="fattura.bin")
        client.send_message(message)
