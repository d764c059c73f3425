// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Documents as other keyed archivers write them. Each is written out as XML here and read as that
// and as the binary form of the same objects.
#include "document/result_document.h"

#include <gtest/gtest.h>

#include "archive/property_list.h"

namespace {

using document::decodeResultDocument;

std::string uid(int index) {
    return "<dict><key>CF$UID</key><integer>" + std::to_string(index) + "</integer></dict>";
}
std::string field(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key>" + value;
}
std::string instance(const std::string& fields, int classIndex) {
    return "<dict>" + fields + field("$class", uid(classIndex)) + "</dict>";
}
std::string text(const std::string& value) {
    return "<string>" + value + "</string>";
}
std::string integer(const std::string& value) {
    return "<integer>" + value + "</integer>";
}
std::string listOf(const std::string& uids, int classIndex) {
    return instance(field("NS.objects", "<array>" + uids + "</array>"), classIndex);
}
std::string dictionaryOf(const std::string& keys, const std::string& values, int classIndex) {
    return instance(field("NS.keys", "<array>" + keys + "</array>") +
                        field("NS.objects", "<array>" + values + "</array>"),
                    classIndex);
}
std::string classEntry(const std::string& name) {
    return "<dict>" + field("$classname", text(name)) +
           field("$classes", "<array>" + text(name) + text("NSObject") + "</array>") + "</dict>";
}

std::string archive(const std::vector<std::string>& objects, int root = 1) {
    std::string all;
    for (const std::string& object : objects) {
        all += object + "\n";
    }
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><dict>)" +
           field("$archiver", text("NSKeyedArchiver")) +
           field("$objects", "<array>" + all + "</array>") +
           field("$top", "<dict>" + field("root", uid(root)) + "</dict>") +
           field("$version", integer("100000")) + "</dict></plist>";
}

std::string asBinary(const std::string& xml) {
    const auto list = archive::readXmlPropertyList(xml);
    EXPECT_TRUE(list.ok()) << list.error().message;
    return archive::writeBinaryPropertyList(list.value());
}

/// Reads both forms of the archive and gives each to `check`.
template <class Check>
void inBothForms(const std::string& xml, Check check) {
    for (const std::string& bytes : {xml, asBinary(xml)}) {
        const auto opened = decodeResultDocument(bytes);
        ASSERT_TRUE(opened.ok()) << opened.error().message;
        check(opened.value());
    }
}

/// A document of one patient whose classes and number forms are given.
struct Forms {
    std::string listClass = "NSMutableArray";
    std::string dictionaryClass = "NSMutableDictionary";
    /// Object 8: the patient's number "7".
    std::string patientNo = "<string>7</string>";
    /// Object 5: the row shown, 2.
    std::string row = "<integer>2</integer>";
    std::string readsMapped = "<integer>41</integer>";
    std::string unknown;
};

std::string onePatient(const Forms& forms) {
    return archive({
        text("$null"),
        dictionaryOf(uid(2) + uid(3), uid(4) + uid(5), 6),
        text("summaryForEachPatientMutAr"),
        text("selectedPatientRowNo"),
        listOf(uid(7), 9),
        forms.row,
        classEntry(forms.dictionaryClass),
        instance(field("patientNo", uid(8)) + field("readsMapped", forms.readsMapped) +
                     forms.unknown,
                 10),
        forms.patientNo,
        classEntry(forms.listClass),
        classEntry("SummaryForEachPatient"),
        classEntry("NSMutableString"),
        classEntry("NSString"),
        classEntry("NSTask"),
        instance(field("launchPath", uid(8)), 13),
    });
}

void expectPatient7(const run::MainMutDictionary& opened) {
    EXPECT_EQ(opened.selectedPatientRowNo, 2);
    ASSERT_TRUE(opened.summaryForEachPatientMutAr.has_value());
    ASSERT_EQ(opened.summaryForEachPatientMutAr->size(), 1U);
    EXPECT_EQ((*opened.summaryForEachPatientMutAr)[0]->patientNo, "7");
    EXPECT_EQ((*opened.summaryForEachPatientMutAr)[0]->readsMapped, 41);
}

TEST(ResultDocumentInterchange, ReadsGrowableLists) {
    inBothForms(onePatient({}), expectPatient7);
}

TEST(ResultDocumentInterchange, ReadsFixedListsAndDictionaries) {
    Forms forms;
    forms.listClass = "NSArray";
    forms.dictionaryClass = "NSDictionary";
    inBothForms(onePatient(forms), expectPatient7);
}

TEST(ResultDocumentInterchange, ReadsTextObjectsFixedAndGrowable) {
    for (const int classIndex : {11, 12}) {
        Forms forms;
        forms.patientNo = instance(field("NS.string", text("7")), classIndex);
        inBothForms(onePatient(forms), expectPatient7);
    }
}

TEST(ResultDocumentInterchange, ReadsNumbersStoredAsReals) {
    Forms forms;
    forms.row = "<real>2</real>";
    forms.readsMapped = "<real>41.0</real>";
    inBothForms(onePatient(forms), expectPatient7);
}

TEST(ResultDocumentInterchange, IgnoresUnknownKeysAndObjects) {
    Forms forms;
    forms.unknown = field("colour", uid(14)) + field("born", "<date>2020-01-01T00:00:00Z</date>") +
                    field("bytes", "<data>AAAA</data>") + field("weight", "<real>1.5</real>");
    inBothForms(onePatient(forms), expectPatient7);
}

TEST(ResultDocumentInterchange, ReadsAMissingKeyAsNullZeroOrFalse) {
    inBothForms(onePatient({}), [](const run::MainMutDictionary& opened) {
        const auto& patient = *(*opened.summaryForEachPatientMutAr)[0];
        EXPECT_EQ(patient.file1, std::nullopt);
        EXPECT_EQ(patient.totalNumberOfReads, 0);
        EXPECT_FALSE(patient.mutDomains.has_value());
    });
}

TEST(ResultDocumentInterchange, ReadsARootWithoutItsEntriesAsEmpty) {
    inBothForms(archive({text("$null"), dictionaryOf("", "", 2), classEntry("NSDictionary")}),
                [](const run::MainMutDictionary& opened) {
                    ASSERT_TRUE(opened.summaryForEachPatientMutAr.has_value());
                    EXPECT_TRUE(opened.summaryForEachPatientMutAr->empty());
                    EXPECT_EQ(opened.selectedPatientRowNo, 0);
                });
}

TEST(ResultDocumentInterchange, ReadsObjectsInAnyOrderAndClassesWithHintsOrWithoutAChain) {
    const std::string bareClass = "<dict>" + field("$classname", text("SummaryForEachPatient")) +
                                  field("$classhints", "<array>" + text("X") + "</array>") +
                                  "</dict>";
    const std::string xml =
        archive({bareClass, text("7"), text("$null"),
                 instance(field("readsMapped", integer("41")) + field("file1", uid(2)) +
                              field("patientNo", uid(1)),
                          0),
                 integer("2"), listOf(uid(3), 9), text("summaryForEachPatientMutAr"),
                 text("selectedPatientRowNo"), classEntry("NSDictionary"), classEntry("NSArray"),
                 dictionaryOf(uid(7) + uid(6), uid(4) + uid(5), 8)},
                10);
    inBothForms(xml, expectPatient7);
}

TEST(ResultDocumentInterchange, ReadsADomainThatTheListAndARowShareAsOne) {
    const std::string xml = archive({
        text("$null"),
        dictionaryOf(uid(2), uid(3), 4),
        text("summaryForEachPatientMutAr"),
        listOf(uid(6), 5),
        classEntry("NSMutableDictionary"),
        classEntry("NSMutableArray"),
        instance(field("mutDomains", uid(8)) + field("somaticDNAResultMutAr", uid(9)), 7),
        classEntry("SummaryForEachPatient"),
        listOf(uid(10), 5),
        listOf(uid(12), 5),
        instance(field("name", uid(0)) + field("canStopSearchIfMatched", integer("1")), 11),
        classEntry("MutDomain"),
        instance(field("mutDomain", uid(10)), 13),
        classEntry("ReportSomaticDNA"),
    });
    inBothForms(xml, [](const run::MainMutDictionary& opened) {
        const auto& patient = *(*opened.summaryForEachPatientMutAr)[0];
        EXPECT_EQ((*patient.somaticDNAResultMutAr)[0]->mutDomain, (*patient.mutDomains)[0]);
        EXPECT_TRUE((*patient.mutDomains)[0]->canStopSearchIfMatched);
    });
}

struct Refused {
    std::string what;
    std::string xml;
};

TEST(ResultDocumentInterchange, RefusesRecordsThatBelongElsewhere) {
    Forms real;
    real.readsMapped = "<real>0.5</real>";
    Forms beyond;
    beyond.row = integer("9223372036854775808");
    Forms record;
    record.patientNo = instance("", 10);
    Forms rows;
    rows.unknown = field("mutDomains", uid(4));
    Forms foreignRoot;
    foreignRoot.dictionaryClass = "NSTask";
    const Refused refused[] = {
        {"a fraction where a count is due", onePatient(real)},
        {"a row beyond 64 bits", onePatient(beyond)},
        {"a record where a text is due", onePatient(record)},
        {"patients where domains are due", onePatient(rows)},
        {"a root of another class", onePatient(foreignRoot)},
        {"an entry of the root twice",
         archive({text("$null"), dictionaryOf(uid(2) + uid(3), uid(4) + uid(4), 5),
                  text("selectedPatientRowNo"), text("selectedPatientRowNo"), integer("1"),
                  classEntry("NSDictionary")})},
        {"a root beyond the objects", archive({text("$null")}, 5)},
    };
    for (const Refused& document : refused) {
        EXPECT_FALSE(decodeResultDocument(document.xml).ok()) << document.what;
        EXPECT_FALSE(decodeResultDocument(asBinary(document.xml)).ok()) << document.what;
    }
}

} // namespace
