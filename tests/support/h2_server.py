"""An H2 engine that speaks PostgreSQL's protocol, for tests that want SQL Server's dialect parsed by somebody else.

    h2_server.py --directory DIR

Prints "READY <port>" and runs until its standard input ends or it is told to stop. Databases are made on first use.

In front of the engine there is a small relay: the PostgreSQL driver opens every connection with settings that the engine
does not know, and that become settings that it does: SQL Server's mode, which the engine resets at every login.
"""

import argparse
import signal
import socket
import subprocess
import sys
import threading

# What the driver says, and what the engine hears: of equal length, since a message tells its own.
SUBSTITUTES = [
    (b"set client_encoding to 'UTF8'", b"SET MODE MSSQLServer         "),
    (b"SET extra_float_digits = 2", b"SET DATESTYLE = 'ISO'     "),
    (b"show transaction_isolation", b"SELECT 'read committed'   "),
]
LARGEST = 65536


def pump(source, target, substitutes):
    try:
        while data := source.recv(LARGEST):
            # An end that keeps small messages back until the last one is acknowledged must not wait for that.
            source.setsockopt(socket.IPPROTO_TCP, socket.TCP_QUICKACK, 1)
            for said, heard in substitutes:
                data = data.replace(said, heard)
            target.sendall(data)
    except OSError:
        pass
    for end in (source, target):
        try:
            end.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass


def relay(listener, port):
    while True:
        client, _ = listener.accept()
        engine = socket.create_connection(("127.0.0.1", port))
        for end in (client, engine):  # small messages to and fro, each of which would wait for the last one's receipt
            end.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        threading.Thread(target=pump, args=(client, engine, SUBSTITUTES), daemon=True).start()
        threading.Thread(target=pump, args=(engine, client, []), daemon=True).start()


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def start_engine(directory):
    for _ in range(5):  # the port may be taken between being found free and being used
        port = free_port()
        engine = subprocess.Popen(
            ["setpriv", "--pdeathsig", "KILL", "java", "-Xshare:auto", "-XX:TieredStopAtLevel=1",
             # Told no address, the engine looks up the machine's own name, which need not be known.
             "-Dh2.bindAddress=127.0.0.1", "-cp", "/usr/share/java/h2.jar", "org.h2.tools.Server",
             "-pg", "-pgPort", str(port), "-ifNotExists", "-baseDir", directory],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        line = engine.stdout.readline()
        if "PG server running" in line and str(port) in line:
            return engine, port
        engine.kill()
        engine.wait()
    sys.exit("the engine did not start: " + line)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--directory", required=True)
    engine, port = start_engine(parser.parse_args().directory)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(0))
    try:
        listener = socket.create_server(("127.0.0.1", 0))
        threading.Thread(target=relay, args=(listener, port), daemon=True).start()
        print("READY", listener.getsockname()[1], flush=True)
        engine.wait()
    finally:
        engine.kill()
        engine.wait()


if __name__ == "__main__":
    main()
