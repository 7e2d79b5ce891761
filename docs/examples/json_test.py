#!/usr/bin/env python3
"""json.c and rtcm2_json.py write the same, and what `rtcm2 export` writes.

    json_test.py JSON PROGRAM SAMPLES
"""
import json
import subprocess
import sys
import unittest
from pathlib import Path

JSON, PROGRAM, SAMPLES = sys.argv[1:4]
EXAMPLES = [[JSON], [sys.executable, "-B", Path(__file__).with_name("rtcm2_json.py")]]
# First wrong or unknown, then a message that is printed all the same.
WRONG = {
    "": "RTCM2_ERR_INVALID_MESSAGE",
    "66": "RTCM2_ERR_INVALID_MESSAGE",
    "660": "No hexadecimal digits",
    "66zz": "No hexadecimal digits",
    "66 +4 05": "No hexadecimal digits",
    "66" * 100: "No hexadecimal digits",
    "66" * 3000: "No hexadecimal digits",
    "\u00e9\u00ff": "No hexadecimal digits",
    "6600058ca310": "Unknown type 0",
    "66fc058ca310": "Unknown type 63",
    "6604058ca3": "RTCM2_ERR_MESSAGE_TYPE_1_NO_OF_DATA_WORDS_EXT_BUFFER_OVERFLOW",
    "6604058ca3102c": "RTCM2_ERR_DGNSS_PRC_EXT_BUFFER_OVERFLOW",
}


def run(command, data=b"", status=0):
    done = subprocess.run(command, input=data, capture_output=True, check=False)
    if done.returncode != status:
        raise AssertionError(f"{command} ended with {done.returncode}: {done.stderr}")
    return done.stdout, done.stderr.decode(errors="replace").splitlines()


def convert(name):
    return run([PROGRAM, "convert", "--to", "hex", f"{SAMPLES}/{name}"])[0]


def plain(value):
    """Without texts and units, and with the names that people see."""
    if isinstance(value, list):
        return [plain(element) for element in value]
    if not isinstance(value, dict):
        return value
    if "value" in value:
        return value["value"]
    return [(name.rstrip("_"), plain(member)) for name, member in value.items() if name != "kind"]


class Json(unittest.TestCase):
    def test_examples_and_export_agree(self):
        described = convert("all-types.rtcm2")
        outputs = [run(command, described + convert("wide-area.rtcm2"))[0] for command in EXAMPLES]
        self.assertEqual(*outputs)
        ours = [json.loads(line) for line in outputs[0].splitlines()]
        exported = [json.loads(line)["fields"] for line in
                    run([PROGRAM, "export", "-"], described)[0].splitlines()]
        self.assertEqual(len(ours), len(exported) + 11)
        for message, fields in zip(ours, exported):
            self.assertEqual(plain(message), plain(fields))

    def test_characters_are_escaped(self):
        digits = "6641a15e5828" + b'"\\/\b\f\n\r\t\0\x01\x1f \x7f\x80\xff'.hex()
        for command in EXAMPLES:
            message = json.loads(run([*command, digits])[0])
            self.assertEqual(message["Message"], '"\\/\b\f\n\r\t\0\x01\x1f \x7f\x80\xff')

    def test_wrong_input_is_reported_and_the_rest_printed(self):
        good = "6605a15f6b06"
        for command in EXAMPLES:
            for digits, complaint in WRONG.items():
                with self.subTest(command=command, digits=digits[:20]):
                    lines = f"{digits}\n{good}".encode("latin-1")
                    output, complaints = run(command, lines, status=1)
                    self.assertEqual(json.loads(output)["kind"], "Message_Type_1")
                    self.assertEqual([line.split(":")[0][:len(complaint)] for line in complaints],
                                     [complaint])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
