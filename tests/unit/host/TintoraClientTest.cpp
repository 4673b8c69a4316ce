// The host's client of "KV Tintora Suite" against a table of stand-in
// functions published in the host: what it acquires and gives back, how it
// passes arguments and reads answers, and that a null entry is refused
// rather than called.
#include <kelvra/Host.h>
#include <kelvra/TintoraClient.h>

#include "HostState.h"
#include "tests/support/TemporaryFolder.h"

#include <KVFileSuites.h>
#include <KVStringSuites.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using kelvra::TintoraClient;

constexpr ZPErr kFailure = ZP_FOURCC('F', 'A', 'I', 'L');

// What the stand-in functions saw and answer.
struct Seen {
    int booksMade = 0;
    int booksDisposed = 0;
    int calls = 0;
    std::string path;            // the last path a function was given
    std::string exportBytes = "exported";
    ZPErr exportAnswer = kZPNoErr;
    KVDocumentHandle exportedDocument = nullptr;
};
Seen seen;
int bookObject = 0;
int listObject = 0;
KVReferenceBookRef const kBook = reinterpret_cast<KVReferenceBookRef>(&bookObject);
KVSwatchListRef const kList = reinterpret_cast<KVSwatchListRef>(&listObject);

kelvra::HostState& State() { return *kelvra::CurrentHost(); }

ZPErr ZPAPI NewBook(KVReferenceBookRef* book) {
    ++seen.calls;
    ++seen.booksMade;
    *book = kBook;
    return kZPNoErr;
}
ZPErr ZPAPI DisposeBook(KVReferenceBookRef book) {
    ++seen.calls;
    if (book != kBook) return kZPBadParameterErr;
    ++seen.booksDisposed;
    return kZPNoErr;
}
ZPErr ZPAPI BookId(KVReferenceBookRef book, std::int32_t* id) {
    ++seen.calls;
    *id = book == kBook ? 4711 : 0;
    return kZPNoErr;
}
ZPErr ZPAPI FindSwatch(KVReferenceBookRef, KVUnicodeStringRef name, KVReferenceColor* color) {
    ++seen.calls;
    const std::string text = State().Utf8Of(name);
    if (text == "Red") {
        *color = KVReferenceColor{kKVReferenceRGB, {1, 0, 0.5, 0}, 1};
        return kZPNoErr;
    }
    if (text == "Xyz") {
        color->spot = 1;
        return kZPNoErr;
    }
    return kZPNameNotFoundErr;
}
ZPErr ZPAPI Count(std::int32_t* count) {
    ++seen.calls;
    *count = 3;
    return kZPNoErr;
}
ZPErr ZPAPI SwatchListOf(std::int32_t index, KVSwatchListRef* list) {
    ++seen.calls;
    *list = index == 2 ? kList : nullptr;
    return index == 2 ? kZPNoErr : kZPBadParameterErr;
}
ZPBoolean ZPAPI IsOpen(std::int32_t index) {
    ++seen.calls;
    return index == 2;
}
ZPErr ZPAPI Name(std::int32_t index, KVUnicodeStringRef name) {
    ++seen.calls;
    State().SetText(name, u"");
    if (index < 1) return kZPBadParameterErr;
    State().SetText(name, u"Br\u00fcghts");
    return kZPNoErr;
}
ZPErr ZPAPI OpenFile(KVFilePathRef path, KVSwatchListRef* list) {
    ++seen.calls;
    seen.path = State().filePaths.Find(path)->path;
    *list = kList;
    return kZPNoErr;
}
ZPErr ZPAPI Export(KVDataFilterRef filter, KVDocumentHandle document) {
    ++seen.calls;
    seen.exportedDocument = document;
    std::size_t count = seen.exportBytes.size();
    State().dataFilters.Find(filter)->file.Write(seen.exportBytes.data(), &count);
    return seen.exportAnswer;
}
ZPBoolean ZPAPI IsColorBook(KVDataFilterRef filter) {
    ++seen.calls;
    char magic[4] = {};
    std::size_t count = 4;
    State().dataFilters.Find(filter)->file.Read(magic, &count);
    return count == 4 && std::string(magic, 4) == "7KCB";
}
ZPErr ZPAPI ReadBook(KVFilePathRef file, KVReferenceBookRef book) {
    ++seen.calls;
    seen.path = State().filePaths.Find(file)->path;
    return book == kBook ? kZPNoErr : kZPBadParameterErr;
}
ZPErr ZPAPI ReadLegacy(KVFilePathRef, KVReferenceBookRef) {
    ++seen.calls;
    return kZPCantHappenErr;
}

ZPErr ZPAPI OpenLibrary(std::int32_t index, KVSwatchListRef* list) {
    ++seen.calls;
    if (index <= 0) return kZPNoDocumentErr;
    *list = kList;
    return kZPNoErr;
}

const KVTintoraSuite kTable = {NewBook, DisposeBook, BookId,   FindSwatch, Count,       SwatchListOf, OpenLibrary,
                               IsOpen,  Name,        OpenFile, Export,     IsColorBook, ReadBook,     ReadLegacy};

class TintoraClientTest : public ::testing::Test {
protected:
    void SetUp() override { seen = Seen{}; }

    void Publish(const KVTintoraSuite& table) {
        ASSERT_EQ(State().suites.Add(kKVTintoraSuite, kKVTintoraSuiteVersion, &table, nullptr), 0u);
    }
    static std::string Contents(const std::filesystem::path& file) {
        std::ifstream in(file, std::ios::binary);
        std::stringstream contents;
        contents << in.rdbuf();
        return contents.str();
    }
    void ExpectNothingLive() {
        const kelvra::ObjectCounts live = host.LiveObjects();
        EXPECT_EQ(live.strings, 0u);
        EXPECT_EQ(live.filePaths, 0u);
        EXPECT_EQ(live.dataFilters, 0u);
    }

    kelvra::Host host;
    testsupport::TemporaryFolder folder;
};

TEST_F(TintoraClientTest, AcquiresTheSuiteLikeAPlugInAndReleasesEverythingAtTheEnd) {
    Publish(kTable);
    {
        TintoraClient client(host.BasicSuite());
        EXPECT_TRUE(client.Acquired());
        EXPECT_EQ(client.RefusedSuite(), "");
        EXPECT_EQ(client.AcquisitionFailure(), 0u);
        EXPECT_EQ(host.SuitesHeld(), 4u);  // the suite, strings, paths and data filters
    }
    EXPECT_EQ(host.SuitesHeld(), 0u);
    bool found = false;
    for (const kelvra::SuiteCount& suite : host.SuiteCounts()) {
        if (suite.name != kKVTintoraSuite) continue;
        found = true;
        EXPECT_EQ(suite.version, 1);
        EXPECT_EQ(suite.acquired, 1u);
        EXPECT_EQ(suite.released, 1u);
    }
    EXPECT_TRUE(found);
}

TEST_F(TintoraClientTest, ASuiteThatIsNotPublishedIsReportedAndEveryCallRefused) {
    TintoraClient client(host.BasicSuite());
    EXPECT_FALSE(client.Acquired());
    EXPECT_EQ(client.RefusedSuite(), "KV Tintora Suite 1");
    EXPECT_EQ(client.AcquisitionFailure(), kZPSuiteNotFoundErr);
    EXPECT_TRUE(client.CountLibraries().call.refused);
    EXPECT_TRUE(client.NewReferenceBook().call.refused);
    EXPECT_TRUE(client.IsColorBookFile(folder.Path() / "any").call.refused);
    EXPECT_EQ(host.SuitesHeld(), 0u);
}

TEST_F(TintoraClientTest, AHostSuiteRefusedLeavesNothingHeld) {
    Publish(kTable);
    host.Faults().MakeSuiteUnavailable(kKVDataFilterSuite);
    TintoraClient client(host.BasicSuite());
    EXPECT_FALSE(client.Acquired());
    EXPECT_EQ(client.RefusedSuite(), "KV Data Filter Suite 10");
    EXPECT_EQ(client.AcquisitionFailure(), kZPSuiteNotFoundErr);
    EXPECT_EQ(host.SuitesHeld(), 0u);
    EXPECT_TRUE(client.CountLibraries().call.refused);
    EXPECT_EQ(seen.calls, 0);
}

TEST_F(TintoraClientTest, AFailedAcquisitionIsReportedWithItsCode) {
    Publish(kTable);
    host.Faults().FailCall({kelvra::kBasicSuiteName, "AcquireSuite", 1, false, kFailure});
    TintoraClient client(host.BasicSuite());
    EXPECT_EQ(client.RefusedSuite(), "KV Tintora Suite 1");
    EXPECT_EQ(client.AcquisitionFailure(), kFailure);
    EXPECT_EQ(host.SuitesHeld(), 0u);
}

TEST_F(TintoraClientTest, NullEntriesAreRefusedAndNeverCalled) {
    const KVTintoraSuite emptied{};
    Publish(emptied);
    TintoraClient client(host.BasicSuite());
    ASSERT_TRUE(client.Acquired());
    kelvra::ReferenceBookHandle noBook;
    const kelvra::TintoraCall calls[] = {
        client.NewReferenceBook().call,
        client.GetReferenceBookID(noBook).call,
        client.FindReferenceSwatch(noBook, "Red").call,
        client.CountLibraries().call,
        client.GetLibrarySwatchList(1).call,
        client.OpenLibrary(1).call,
        client.IsLibraryOpen(1).call,
        client.GetLibraryName(1).call,
        client.OpenLibraryFile(folder.Path() / "a.ose").call,
        client.ExportSwatches(nullptr, nullptr),
        client.IsColorBookFile(KVDataFilterRef{}).call,
        client.IsColorBookFile(folder.Path() / "a.ocb").call,
        client.ExportSwatchesToFile(nullptr, folder.Path() / "out.ose").exported,
        client.ReadColorBook(folder.Path() / "a.ocb", noBook),
        client.ReadLegacyColorBook(folder.Path() / "a.xml", noBook),
    };
    for (const kelvra::TintoraCall& call : calls) {
        EXPECT_TRUE(call.refused);
        EXPECT_FALSE(call.Succeeded());
        EXPECT_EQ(kelvra::ReadableText(call), "refused: the entry is null");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
    ExpectNothingLive();
}

TEST_F(TintoraClientTest, ABookIsDisposedOfThroughTheSuiteOnce) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    {
        auto made = client.NewReferenceBook();
        ASSERT_TRUE(made.call.Succeeded());
        EXPECT_EQ(made.value.Get(), kBook);
        kelvra::ReferenceBookHandle moved = std::move(made.value);
        EXPECT_FALSE(made.value);
        EXPECT_EQ(client.GetReferenceBookID(moved).value, 4711);
    }
    EXPECT_EQ(seen.booksDisposed, 1);
    auto again = client.NewReferenceBook();
    EXPECT_TRUE(again.value.Dispose().Succeeded());
    EXPECT_FALSE(again.value);
    again.value.Dispose();
    EXPECT_EQ(seen.booksDisposed, 2);
}

TEST_F(TintoraClientTest, AColourAnswerIsTypedAndAColourLeftAsItWasHasNoModel) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    auto book = client.NewReferenceBook();
    const auto red = client.FindReferenceSwatch(book.value, "Red");
    EXPECT_TRUE(red.call.Succeeded());
    EXPECT_EQ(red.value.model, kKVReferenceRGB);
    EXPECT_EQ(red.value.values, (std::array<double, 4>{1, 0, 0.5, 0}));
    EXPECT_TRUE(red.value.spot);
    const auto xyz = client.FindReferenceSwatch(book.value, "Xyz");
    EXPECT_TRUE(xyz.call.Succeeded());
    EXPECT_FALSE(xyz.value.model.has_value());
    EXPECT_TRUE(xyz.value.spot);
    const auto missing = client.FindReferenceSwatch(book.value, "Blue");
    EXPECT_EQ(missing.call.code, kZPNameNotFoundErr);
    EXPECT_EQ(kelvra::ReadableText(missing.call), "NAM?");
    ExpectNothingLive();
}

TEST_F(TintoraClientTest, LibraryAnswersAreTyped) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    EXPECT_EQ(client.CountLibraries().value, 3);
    const auto name = client.GetLibraryName(2);
    EXPECT_TRUE(name.call.Succeeded());
    EXPECT_EQ(name.value, "Br\xc3\xbcghts");
    const auto own = client.GetLibraryName(0);
    EXPECT_EQ(own.call.code, kZPBadParameterErr);
    EXPECT_EQ(own.value, "");
    EXPECT_TRUE(client.IsLibraryOpen(2).value);
    EXPECT_FALSE(client.IsLibraryOpen(1).value);
    EXPECT_EQ(client.GetLibrarySwatchList(2).value, kList);
    EXPECT_EQ(client.OpenLibrary(0).call.code, kZPNoDocumentErr);
    const auto opened = client.OpenLibraryFile(folder.Path() / "other.ose");
    EXPECT_EQ(opened.value, kList);
    EXPECT_EQ(seen.path, (folder.Path() / "other.ose").string());
    ExpectNothingLive();
}

TEST_F(TintoraClientTest, AFailedHostCallIsNamedAndTheFunctionNotCalled) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    auto book = client.NewReferenceBook();
    const int before = seen.calls;
    host.Faults().FailCall({kKVUnicodeStringSuite, "NewFromUTF8", 1, false, kFailure});
    const auto answer = client.FindReferenceSwatch(book.value, "Red");
    EXPECT_EQ(answer.call.failedHostCall, "KV Unicode String Suite NewFromUTF8");
    EXPECT_EQ(answer.call.code, kFailure);
    EXPECT_FALSE(answer.call.Succeeded());
    EXPECT_EQ(kelvra::ReadableText(answer.call), "KV Unicode String Suite NewFromUTF8 answered FAIL");
    host.Faults().FailCall({kKVFilePathSuite, "NewFromString", 1, false, kFailure});
    EXPECT_EQ(client.ReadColorBook(folder.Path() / "a.ocb", book.value).failedHostCall,
              "KV File Path Suite NewFromString");
    EXPECT_EQ(seen.calls, before);
    ExpectNothingLive();
}

TEST_F(TintoraClientTest, ReadsPassTheFileAndTheBook) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    auto book = client.NewReferenceBook();
    EXPECT_TRUE(client.ReadColorBook(folder.Path() / "a.ocb", book.value).Succeeded());
    EXPECT_EQ(seen.path, (folder.Path() / "a.ocb").string());
    EXPECT_EQ(client.ReadLegacyColorBook(folder.Path() / "a.xml", book.value).code, kZPCantHappenErr);
}

TEST_F(TintoraClientTest, IsColorBookFileReadsThroughAFilterItGivesBack) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    const std::string book = folder.Write("book", "7KCB and more");
    const std::string other = folder.Write("other", "<xml/>");
    EXPECT_TRUE(client.IsColorBookFile(book).value);
    const auto no = client.IsColorBookFile(other);
    EXPECT_TRUE(no.call.Succeeded());
    EXPECT_FALSE(no.value);
    const auto missing = client.IsColorBookFile(folder.Path() / "missing");
    EXPECT_EQ(missing.call.failedHostCall, "KV Data Filter Suite LinkDataFilter");
    EXPECT_EQ(kelvra::ReadableText(missing.call), "KV Data Filter Suite LinkDataFilter answered OPEN");
    ExpectNothingLive();
}

TEST_F(TintoraClientTest, ASuccessfulExportReplacesTheFile) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    const std::string out = folder.Write("out.ose", "old");
    int document = 0;
    const auto handle = reinterpret_cast<KVDocumentHandle>(&document);
    const kelvra::FileExport result = client.ExportSwatchesToFile(handle, out);
    EXPECT_TRUE(result.Written());
    EXPECT_EQ(result.unlinked, kZPNoErr);
    EXPECT_FALSE(result.discarded.has_value());
    EXPECT_EQ(seen.exportedDocument, handle);
    EXPECT_EQ(Contents(out), "exported");
    ExpectNothingLive();
}

TEST_F(TintoraClientTest, AFailedExportDiscardsItsFilterAndLeavesTheFile) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    const std::string out = folder.Write("out.ose", "old");
    seen.exportAnswer = kZPCantHappenErr;
    const kelvra::FileExport result = client.ExportSwatchesToFile(nullptr, out);
    EXPECT_FALSE(result.Written());
    EXPECT_EQ(result.exported.code, kZPCantHappenErr);
    EXPECT_FALSE(result.unlinked.has_value());
    EXPECT_EQ(result.discarded, kZPNoErr);
    EXPECT_EQ(Contents(out), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
    ExpectNothingLive();
}

TEST_F(TintoraClientTest, AFailedUnlinkIsNotAWrittenFile) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    const std::string out = folder.Write("out.ose", "old");
    host.Faults().FailCall({kKVDataFilterSuite, "UnlinkDataFilter", 1, false, kFailure});
    const kelvra::FileExport result = client.ExportSwatchesToFile(nullptr, out);
    EXPECT_TRUE(result.exported.Succeeded());
    EXPECT_EQ(result.unlinked, kFailure);
    EXPECT_FALSE(result.Written());
    EXPECT_EQ(Contents(out), "old");
    ExpectNothingLive();  // the filter the host kept was discarded
}

TEST_F(TintoraClientTest, AnExportThatCannotOpenItsFileIsNeverCalled) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    const kelvra::FileExport result = client.ExportSwatchesToFile(nullptr, folder.Path() / "no" / "out.ose");
    EXPECT_EQ(result.exported.failedHostCall, "KV Data Filter Suite LinkDataFilter");
    EXPECT_EQ(result.discarded, kZPNoErr);
    EXPECT_EQ(seen.calls, 0);
    ExpectNothingLive();
}

TEST_F(TintoraClientTest, AReleasedClientRefusesEveryCall) {
    Publish(kTable);
    TintoraClient client(host.BasicSuite());
    client.Release();
    EXPECT_EQ(host.SuitesHeld(), 0u);
    EXPECT_TRUE(client.CountLibraries().call.refused);
    EXPECT_EQ(seen.calls, 0);
}

}  // namespace
