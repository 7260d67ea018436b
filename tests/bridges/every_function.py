#!/usr/bin/python3
"""Asks a Modbus server of ZK4 names whatever its map allows and does not: every_function.py PORT CONTROL MAP

CONTROL is 1 where the server may be written to; MAP the output of --map. A line for each thing that is not as it should be,
then status 1.
"""
import csv
import sys

from pymodbus import file_message as file, other_message as other
from pymodbus.client import ModbusTcpClient
from pymodbus.diag_message import ReturnBusMessageCountRequest
from pymodbus.mei_message import ReadDeviceInformationRequest
from pymodbus.pdu import ExceptionResponse

PORT, CONTROL = int(sys.argv[1]), sys.argv[2] == "1"
UNKNOWN, ADDRESS, VALUE = 1, 2, 3
failures = []


def expect(what, found, wanted):
    if found != wanted:
        failures.append(f"{what}: {found}, not {wanted}")


def refusal(answer):
    """The exception that was answered; 0 when it was none."""
    return answer.exception_code if isinstance(answer, ExceptionResponse) else 0


def table(rows, name):
    return [row["nom"] for row in rows if row["table"] == name]


def check_map(client, rows):
    """Every address of the map is there, and the next one is not."""
    for name, read in (("entree_discrete", client.read_discrete_inputs), ("bobine", client.read_coils),
                       ("registre_entree", client.read_input_registers)):
        addresses = [int(row["adresse"]) for row in rows if row["table"] == name]
        expect(f"addresses of {name}", addresses, list(range(len(addresses))))
        for address in addresses:
            expect(f"{name} {address}", refusal(read(address, 1)), 0)
        expect(f"all of {name}", refusal(read(0, len(addresses))), 0)
        expect(f"{name} beyond", refusal(read(len(addresses), 1)), ADDRESS)
        expect(f"{name}, one too many", refusal(read(0, len(addresses) + 1)), ADDRESS)
        expect(f"{name} far out", refusal(read(65535, 1)), ADDRESS)


def check_registers(client):
    for what, answer in (("3", client.read_holding_registers(0, 1)), ("3 at 65535", client.read_holding_registers(65535, 1))):
        expect(what, refusal(answer), ADDRESS)
    wanted = ADDRESS if CONTROL else UNKNOWN
    expect("6", refusal(client.write_register(0, 1)), wanted)
    expect("16", refusal(client.write_registers(0, [1, 2])), wanted)
    expect("22", refusal(client.mask_write_register(0, 1, 2)), wanted)
    expect("23", refusal(client.readwrite_registers(read_address=0, read_count=1, write_address=0, write_registers=[1])), wanted)


def check_coils(client, outputs):
    coils = len(outputs)
    last = coils - 1
    if not CONTROL:
        expect("5", refusal(client.write_coil(0, True)), UNKNOWN)
        expect("15", refusal(client.write_coils(0, [True] * coils)), UNKNOWN)
        return
    expect("5", refusal(client.write_coil(last, True)), 0)
    expect("coils after 5", client.read_coils(0, coils).bits[:coils], [False] * last + [True])
    values = [i % 3 == 0 for i in range(coils)]
    expect("15", refusal(client.write_coils(0, values)), 0)
    expect("coils after 15", client.read_coils(0, coils).bits[:coils], values)
    expect("5 beyond", refusal(client.write_coil(coils, True)), ADDRESS)
    expect("15 beyond", refusal(client.write_coils(1, values)), ADDRESS)
    expect("all off", refusal(client.write_coils(0, [False] * coils)), 0)


def check_unknown(client):
    for what, request in (("7", other.ReadExceptionStatusRequest()), ("8", ReturnBusMessageCountRequest(data=0)),
                          ("11", other.GetCommEventCounterRequest()), ("12", other.GetCommEventLogRequest()),
                          ("17", other.ReportSlaveIdRequest()), ("20", file.ReadFileRecordRequest([])),
                          ("24", file.ReadFifoQueueRequest(0)), ("43", ReadDeviceInformationRequest())):
        request.unit_id = 1
        expect(what, refusal(client.execute(request)), UNKNOWN)


def main():
    with open(sys.argv[3], newline="", encoding="utf-8") as lines:
        rows = list(csv.DictReader(lines))
    expect("registers", table(rows, "registre_entree"),
           ["publications_poids_fort", "publications_poids_faible", "age_dixiemes", "etat"])
    client = ModbusTcpClient("127.0.0.1", port=PORT)
    if not client.connect():
        sys.exit("no connection")
    check_map(client, rows)
    check_registers(client)
    check_coils(client, table(rows, "bobine"))
    check_unknown(client)
    for count in (0, 2001):
        expect(f"2 with {count}", refusal(client.read_discrete_inputs(0, count)), VALUE)
    expect("4 with 126", refusal(client.read_input_registers(0, 126)), VALUE)
    client.close()


main()
print("\n".join(failures))
sys.exit(1 if failures else 0)
