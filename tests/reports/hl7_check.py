"""Reads an HL7 export of results with python-hl7 and checks it against what the test
expects: message and segment order, field positions, escaping of every text."""
import json
import re
import sys

import hl7

ORDER = re.compile(r"^MSH SFT( ORC OBR( NTE)+( OBX)+ SPM)+$")


def fail(text):
    print("hl7_check: " + text)
    sys.exit(1)


def text(message, segment, position):
    return message.unescape(str(segment[position])) if len(segment) > position else ""


def main(path, expected_path):
    with open(path, "rb") as f:
        raw = f.read().decode("utf-8")
    with open(expected_path, encoding="utf-8") as f:
        expected = json.load(f)

    messages = [hl7.parse(m) for m in hl7.split_file(raw)]
    if len(messages) != expected["plates"]:
        fail("%d messages for %d plates" % (len(messages), expected["plates"]))
    ids = set()
    samples, groups, technicians = [], [], set()
    for m in messages:
        names = " ".join(str(s[0]) for s in m)
        if not ORDER.match(names):
            fail("segment order " + names)
        msh = m.segment("MSH")
        if str(msh[3]) != "Tavimetra" or str(msh[9]) != "ORU^R01^ORU_R01" or str(msh[12]) != "2.5.1":
            fail("MSH " + str(msh))
        ids.add(str(msh[10]))
        obx_of_order = []
        for seg in list(m)[2:]:
            kind = str(seg[0])
            if kind == "ORC":
                order = {"orc": seg}
                obx_of_order = []
            elif kind == "OBR":
                order["obr"] = seg
                if str(seg[25]) != "F":
                    fail("OBR-25 " + str(seg))
            elif kind == "OBX":
                obx_of_order.append(seg)
            elif kind == "SPM":
                obr, orc = order["obr"], order["orc"]
                sample = text(m, obr, 3)
                if text(m, seg, 2) != sample or text(m, orc, 3) != sample:
                    fail("specimen id and order number differ: " + str(obr))
                od = obx_of_order[0]
                if str(od[3]).split("^")[0] != "OD" or str(od[2]) not in ("NM", "ST"):
                    fail("first OBX is not the OD: " + str(od))
                role = str(seg[11])
                if role == "Q":
                    if str(obx_of_order[-1][3]).split("^")[0] != "INCLUDED":
                        fail("a control without its inclusion: " + str(seg))
                else:
                    res = obx_of_order[-1]
                    flag = str(res[8])
                    if str(res[2]) != "CWE" or (flag not in ("POS", "NEG") and str(res[11]) != "X"):
                        fail("result OBX " + str(res))
                    if flag and (str(res[11]) != "F" or str(res[5]).split("^")[0] != flag):
                        fail("result OBX " + str(res))
                    samples.append(sample)
                    groups.append(text(m, orc, 21))
                for obx in obx_of_order:
                    if str(obx[2]) == "NM":
                        float(str(obx[5]))
                    technicians.add(text(m, obx, 16).lstrip("^"))
    if len(ids) != len(messages):
        fail("message control ids repeat")
    for name in expected["samples"]:
        if name not in samples:
            fail("sample %r lost; have %r" % (name, samples))
    for name in expected["groups"]:
        if name not in groups:
            fail("group %r lost" % name)
    if expected["technician"] not in technicians:
        fail("technician lost: %r" % technicians)
    print("hl7_check: %d messages, %d samples" % (len(messages), len(samples)))


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
