#!/usr/bin/python3
"""Makes one good base of the ZK4 station through Modbus alone: good_base.py PORT MAP SPEED

MAP is the output of --map; SPEED how many simulated seconds go by in a second. The station has a single base.
"""
import csv
import sys
import time

from pymodbus.client import ModbusTcpClient

# Coils to be written, then the inputs to be waited for.
STEPS = (
    ("", "te=1 pp=1"),
    ("BZ1=1 BZ2=1 BZ3=1", "b1s=1 b2s=1 b3s=1"),
    ("MT=1 MTA=1", "p1ok=1"),
    ("MTA=0 DEPOSE=1", "colle=1"),
    ("DEPOSE=0 BZ1=0", "p2ok=1"),
    ("SORT=1", "ts=1"),
    ("SORT=0 DESV=1", "vb=1"),
    ("ASPI=1", "vide=1"),
    ("DESV=0 MONV=1", "vh=1"),
    ("MONV=0 RENT=1", "te=1"),
    ("RENT=0 DESV=1", "vb=1"),
    ("ASPI=0", "vide=0"),
    ("DESV=0 MONV=1", "vh=1"),
    ("MONV=0 BZ2=0", "p3ok=1"),
    ("DESP=1", "timer10_term=1"),
    ("DESP=0 MONP=1", "ph=1"),
    ("MONP=0 BZ3=0", "p3ok=0"),
)
LEAVES_AFTER_S, LIMIT_S = 6.0, 30.0


class Station:
    def __init__(self, port, map_file):
        with open(map_file, newline="", encoding="utf-8") as lines:
            self.address = {(row["table"], row["nom"]): int(row["adresse"]) for row in csv.DictReader(lines)}
        self.client = ModbusTcpClient("127.0.0.1", port=port)
        if not self.client.connect():
            sys.exit("no connection")

    def write(self, coil, value):
        answer = self.client.write_coil(self.address["bobine", coil], value)
        if answer.isError():
            sys.exit(f"{coil}: {answer}")

    def holds(self, conditions):
        inputs = self.client.read_discrete_inputs(0, sum(table == "entree_discrete" for table, _ in self.address)).bits
        return all(inputs[self.address["entree_discrete", name]] == (value == "1")
                   for name, value in (condition.split("=") for condition in conditions.split()))

    def wait(self, conditions, limit_s=LIMIT_S):
        end = time.monotonic() + limit_s
        while not self.holds(conditions):
            if time.monotonic() > end:
                sys.exit(f"{conditions} does not come")
            time.sleep(0.01)


def main():
    station, speed = Station(int(sys.argv[1]), sys.argv[2]), float(sys.argv[3])
    for coils, conditions in STEPS:
        for coil, value in (coil.split("=") for coil in coils.split()):
            station.write(coil, value == "1")
        station.wait(conditions)
    left = time.monotonic() + LEAVES_AFTER_S / speed
    while time.monotonic() < left:
        station.wait("p3ok=0")  # Whoever commands must be heard.
        time.sleep(0.01)
    station.write("MT", False)
    station.wait("init=1")


main()
