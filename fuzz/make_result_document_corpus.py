#!/usr/bin/env python3
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""Writes the seeds of result_document_fuzz into fuzz/corpus/result_document.

Small documents in every form that is read, and damaged ones: places from which a fuzzer gets
everywhere. The same files each time. Usage: fuzz/make_result_document_corpus.py
"""
import pathlib
import plistlib
from plistlib import FMT_BINARY, FMT_XML, UID

CORPUS = pathlib.Path(__file__).parent / "corpus" / "result_document"
NULL = UID(0)


class Archive:
    """Collects the objects of a keyed archive and gives out references to them."""

    def __init__(self, list_class="NSMutableArray", text_class=None):
        self.objects = ["$null"]
        self.classes = {}
        self.list_class = list_class
        self.text_class = text_class

    def add(self, value):
        self.objects.append(value)
        return UID(len(self.objects) - 1)

    def class_entry(self, name):
        if name not in self.classes:
            self.classes[name] = self.add({"$classname": name, "$classes": [name, "NSObject"]})
        return self.classes[name]

    def instance(self, class_name, /, **fields):
        return self.add({**fields, "$class": self.class_entry(class_name)})

    def text(self, value):
        if self.text_class is None:
            return self.add(value)
        return self.instance(self.text_class, **{"NS.string": value})

    def list_of(self, *items):
        return self.instance(self.list_class, **{"NS.objects": list(items)})

    def root(self, keys_and_values, class_name="NSMutableDictionary"):
        keys = [self.add(key) for key in keys_and_values]
        values = list(keys_and_values.values())
        return self.instance(class_name, **{"NS.keys": keys, "NS.objects": values})

    def document(self, root):
        return {"$version": 100000, "$archiver": "NSKeyedArchiver", "$top": {"root": root},
                "$objects": self.objects}


def mutation(archive):
    return archive.instance(
        "Mutation", name=archive.text("KRAS_G12D"), referenceFrequencyOfTheMutantReads=0.5,
        allowableFalsePositiveRate=0.001, allowableFalseNegativeRate=1,
        minimumRequiredNumberOfInformativeReads=30, seq=archive.text("ACGTN"),
        seqContainsWildCard=True, coreSeq=archive.text("GTN"), coreSeqContainsWildCard=0,
        before10bp=NULL, after10bp=archive.text(""), strandRequiredToRead=archive.text("R1"),
        match=-1, posNegDetectedOrAlleleType=archive.text("Positive"),
        mutantCellRatio=archive.text("0.1"), comment=archive.text("Zürich \U0001F9EC"))


def rows(archive, domain):
    text = archive.text
    return {
        "germlineDNAResultMutAr": archive.list_of(archive.instance(
            "ReportGermlineDNA", mutDomain=domain, patientNo=text("1"), areaSearched=text("BIM"),
            allelicType=text("wt/mut"))),
        "somaticDNAResultMutAr": archive.list_of(archive.instance(
            "ReportSomaticDNA", mutDomain=domain, patientNo=text(""), areaSearched=text("KRAS"),
            diagnosis=text("Positive"), mutantCellRatio=text("12%"), comment=NULL)),
        "germlineRNAResultMutAr": archive.list_of(archive.instance(
            "ReportGermlineRNA", mutDomain=NULL, patientNo=text(""), gene=text("OAZ1"),
            diagnosis=text("RNA degraded"), numberOfReads=text("0"), comment=text(""))),
        "somaticRNAResultMutAr": archive.list_of(archive.instance(
            "ReportSomaticRNA", mutDomain=domain, patientNo=text("1"), gene=text("ALK"),
            diagnosis=text("Not Detected"), numberOfReads=text(""), comment=text("<2 copies"))),
    }


def patient(archive):
    domain = archive.instance(
        "MutDomain", name=archive.text("KRAS"), type=archive.text("SomaticDNA"),
        mutationMutAr=archive.list_of(mutation(archive)), canStopSearchIfMatched=True,
        totalNumberOfNormalReads=2**40, totalNumberOfMutantReads=3.0)
    return archive.instance(
        "SummaryForEachPatient", file1=archive.text("a_R1_.fastq"), file2=NULL,
        fastqFileDir=archive.text("/run"), patientNo=archive.text("1"), totalNumberOfReads=300,
        readsFailedToBeMapped=1, readsMapped=299, mutDomains=archive.list_of(domain),
        **rows(archive, domain))


def full(**forms):
    archive = Archive(**forms)
    listed = archive.list_of(patient(archive))
    return archive.document(archive.root(
        {"summaryForEachPatientMutAr": listed, "selectedPatientRowNo": archive.add(0)}))


def empty():
    archive = Archive()
    return archive.document(archive.root(
        {"summaryForEachPatientMutAr": archive.list_of(), "selectedPatientRowNo": archive.add(-1)}))


def sparse():
    """Records without keys, unknown keys, foreign objects, the fixed root dictionary."""
    archive = Archive(list_class="NSArray")
    bare = archive.instance("SummaryForEachPatient", colour=7, later=archive.add(b"data"))
    archive.add({"$classname": "NSTask", "$classhints": ["NSObject"]})
    return archive.document(archive.root(
        {"summaryForEachPatientMutAr": archive.list_of(bare, bare), "extra": archive.add(2.5)},
        class_name="NSDictionary"))


def cyclic():
    archive = Archive()
    listed = archive.list_of()
    archive.objects[listed.data]["NS.objects"] = [listed]
    return archive.document(archive.root({"summaryForEachPatientMutAr": listed}))


def with_spelled_references(value):
    """The XML form spells a reference as a dictionary with the one key "CF$UID"."""
    if isinstance(value, UID):
        return {"CF$UID": value.data}
    if isinstance(value, list):
        return [with_spelled_references(item) for item in value]
    if isinstance(value, dict):
        return {key: with_spelled_references(item) for key, item in value.items()}
    return value


def write(name, data):
    (CORPUS / name).write_bytes(data)


def main():
    CORPUS.mkdir(parents=True, exist_ok=True)
    documents = {
        "full": full(), "fixed": full(list_class="NSArray", text_class="NSMutableString"),
        "texts": full(text_class="NSString"), "empty": empty(), "sparse": sparse(),
        "cyclic": cyclic(), "plain": {"no": ["archive", 1, 2.5, True, b"x"]},
    }
    for name, document in documents.items():
        write(name + ".vexta", plistlib.dumps(document, fmt=FMT_BINARY, sort_keys=False))
        spelled = with_spelled_references(document)
        write(name + ".xml", plistlib.dumps(spelled, fmt=FMT_XML, sort_keys=False))
    binary = plistlib.dumps(documents["full"], fmt=FMT_BINARY, sort_keys=False)
    write("cut.vexta", binary[:-40])
    write("table_beyond.vexta", binary[:-4] + b"\xff\xff\xff\xff")
    write("entity.xml", b'<!DOCTYPE plist [<!ENTITY a "aaaa">]><plist><string>&a;&a;</string></plist>')


if __name__ == "__main__":
    main()
