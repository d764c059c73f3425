#!/usr/bin/env python3
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""Reads a result document with Python's own property-list reader and checks it key by key.

Usage: check_result_document.py WRITER, where WRITER FILE writes the document.
"""
import pathlib
import plistlib
import subprocess
import sys
import tempfile
from plistlib import UID

TEXT, LIST, RECORD = "text", "list", "record"
ROW_HEAD = {"mutDomain": RECORD, "patientNo": TEXT}
RNA_ROW = {**ROW_HEAD, "gene": TEXT, "diagnosis": TEXT, "numberOfReads": TEXT, "comment": TEXT}
CLASSES = {
    "SummaryForEachPatient": {
        "file1": TEXT, "file2": TEXT, "fastqFileDir": TEXT, "patientNo": TEXT,
        "totalNumberOfReads": int, "readsFailedToBeMapped": int, "readsMapped": int,
        "mutDomains": LIST, "germlineDNAResultMutAr": LIST, "somaticDNAResultMutAr": LIST,
        "germlineRNAResultMutAr": LIST, "somaticRNAResultMutAr": LIST},
    "MutDomain": {
        "name": TEXT, "type": TEXT, "mutationMutAr": LIST, "canStopSearchIfMatched": bool,
        "totalNumberOfNormalReads": int, "totalNumberOfMutantReads": int},
    "Mutation": {
        "name": TEXT, "referenceFrequencyOfTheMutantReads": float,
        "allowableFalsePositiveRate": float, "allowableFalseNegativeRate": float,
        "minimumRequiredNumberOfInformativeReads": int, "seq": TEXT, "seqContainsWildCard": bool,
        "coreSeq": TEXT, "coreSeqContainsWildCard": bool, "before10bp": TEXT, "after10bp": TEXT,
        "strandRequiredToRead": TEXT, "match": int, "posNegDetectedOrAlleleType": TEXT,
        "mutantCellRatio": TEXT, "comment": TEXT},
    "ReportGermlineDNA": {**ROW_HEAD, "areaSearched": TEXT, "allelicType": TEXT},
    "ReportSomaticDNA": {**ROW_HEAD, "areaSearched": TEXT, "diagnosis": TEXT,
                         "mutantCellRatio": TEXT, "comment": TEXT},
    "ReportGermlineRNA": RNA_ROW,
    "ReportSomaticRNA": RNA_ROW,
}
CHAINS = {"NSMutableArray": ["NSMutableArray", "NSArray", "NSObject"],
          "NSMutableDictionary": ["NSMutableDictionary", "NSDictionary", "NSObject"],
          **{name: [name, "NSObject"] for name in CLASSES}}


def check(condition, *what):
    if not condition:
        sys.exit("check_result_document: " + " ".join(map(str, what)))


class Checker:
    def __init__(self, archive):
        self.objects = archive["$objects"]
        self.seen = set()

    def at(self, uid):
        check(type(uid) is UID, uid, "is not a reference")
        return self.objects[uid.data]

    def class_of(self, instance):
        entry = self.at(instance["$class"])
        name = entry["$classname"]
        check(entry["$classes"] == CHAINS[name], name, "has the chain", entry["$classes"])
        return name

    def items(self, uid):
        instance = self.at(uid)
        check(self.class_of(instance) == "NSMutableArray", "not a growable list:", instance)
        check(list(instance) == ["NS.objects", "$class"], "a list has keys", list(instance))
        return instance["NS.objects"]

    def record(self, uid):
        instance = self.at(uid)
        name = self.class_of(instance)
        self.seen.add(name)
        check(list(instance) == list(CLASSES[name]) + ["$class"], name, "has keys", list(instance))
        for key, kind in CLASSES[name].items():
            self.field(name, key, kind, instance[key])
        return instance

    def field(self, name, key, kind, value):
        if kind is LIST:
            for item in self.items(value):
                self.record(item)
        elif kind is RECORD:
            self.record(value)
        elif kind is TEXT:
            text = self.at(value)
            check(type(text) is str and (value.data == 0) == (text == "$null"), name, key, text)
        else:
            check(type(value) is kind, name, key, "is", value)


def check_root(checker, archive):
    check(archive["$archiver"] == "NSKeyedArchiver", archive["$archiver"])
    check(archive["$version"] == 100000, archive["$version"])
    check(list(archive["$top"]) == ["root"], archive["$top"])
    check(checker.objects[0] == "$null", checker.objects[0])
    root = checker.at(archive["$top"]["root"])
    check(checker.class_of(root) == "NSMutableDictionary", root)
    check(list(root) == ["NS.keys", "NS.objects", "$class"], list(root))
    keys = [checker.at(key) for key in root["NS.keys"]]
    check(keys == ["summaryForEachPatientMutAr", "selectedPatientRowNo"], keys)
    check(type(checker.at(root["NS.objects"][1])) is int, "the row is no number")
    return root["NS.objects"]


def check_patient(checker, patient, data):
    domain = checker.items(patient["mutDomains"])[0]
    for key in [key for key in patient if key.endswith("ResultMutAr")]:
        row = checker.at(checker.items(patient[key])[0])
        check(row["mutDomain"] == domain, key, "refers to another domain than its patient's list")
    check(checker.at(domain)["totalNumberOfNormalReads"] == 10**12, "a large count is another")
    mutation = checker.at(checker.items(checker.at(domain)["mutationMutAr"])[0])
    comment = checker.at(mutation["comment"])
    check(comment == "Zürich \U0001F9EC", "the comment is", repr(comment))
    check(comment.encode("utf-16-be") in data, "the comment is not stored as UTF-16")
    check(b"KRAS_G12D" in data, "plain text is not stored as ASCII")
    check((mutation["seqContainsWildCard"], mutation["match"]) == (True, -1), mutation)


def main():
    with tempfile.TemporaryDirectory() as directory:
        path = pathlib.Path(directory) / "run.vexta"
        subprocess.run([sys.argv[1], path], check=True)
        data = path.read_bytes()
    archive = plistlib.loads(data, fmt=plistlib.FMT_BINARY)
    checker = Checker(archive)
    patients, row = check_root(checker, archive)
    check(checker.at(row) == 0, "the row is", checker.at(row))
    check_patient(checker, checker.record(checker.items(patients)[0]), data)
    check(checker.seen == set(CLASSES), "never met", set(CLASSES) - checker.seen)


if __name__ == "__main__":
    main()
