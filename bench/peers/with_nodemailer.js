// Sends messages with Nodemailer over a pool of one connection.
// Arguments: PORT MESSAGES BODY-BYTES CA ATTACHMENT; the last two may be empty.
const fs = require('fs');
const nodemailer = require('nodemailer');

const [port, messages, bytes, ca, attachment] = process.argv.slice(2);
const transport = nodemailer.createTransport({
  host: '127.0.0.1',
  port: Number(port),
  secure: ca !== '',
  ignoreTLS: ca === '',
  tls: ca === '' ? {} : {ca: fs.readFileSync(ca)},
  name: 'bench.example',
  pool: true,
  maxConnections: 1,
  maxMessages: Infinity,
});
const text = ('x'.repeat(70) + '\n').repeat(Math.floor(Number(bytes) / 71));

(async () => {
  for (let i = 0; i < Number(messages); ++i) {
    await transport.sendMail({
      from: 'Azienda S.p.A. <fatture@azienda.example>',
      to: 'Ferramenta Bianchi S.r.l. <ordini@bianchi.example>',
      subject: 'Fattura n. 123 del 14/11/2026',
      text,
      attachments: attachment === '' ? [] : [{path: attachment}],
    });
  }
  transport.close();
})().catch((failure) => {
  console.error(failure.message);
  process.exit(1);
});
