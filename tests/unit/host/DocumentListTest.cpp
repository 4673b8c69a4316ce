#include <kelvra/DocumentList.h>
#include <kelvra/HostError.h>

#include <gtest/gtest.h>

namespace {

using kelvra::Document;
using kelvra::DocumentList;

TEST(DocumentListTest, TheDocumentMadeCurrentLastIsCurrent) {
    DocumentList documents;
    EXPECT_EQ(documents.Current(), nullptr);
    Document& first = documents.New("first");
    EXPECT_EQ(documents.Current(), &first);
    Document& second = documents.Add(std::make_unique<Document>("second"));
    EXPECT_EQ(documents.Current(), &second);
    documents.MakeCurrent(first);
    EXPECT_EQ(documents.Current(), &first);
    EXPECT_EQ(documents.All(), (std::vector<Document*>{&first, &second}));
}

TEST(DocumentListTest, ADocumentThatIsNotOpenCannotBeMadeCurrent) {
    DocumentList documents;
    const Document stray("stray");
    EXPECT_THROW(documents.MakeCurrent(stray), kelvra::HostError);
}

TEST(DocumentListTest, ClosingTheCurrentDocumentLeavesNoneCurrentAndItsHandlesStale) {
    DocumentList documents;
    Document& kept = documents.New("kept");
    Document& closed = documents.New("closed");
    const KVDocumentHandle handle = closed.Handle();
    const KVSwatchListRef list = closed.SwatchList();
    const KVSwatchRef swatch = kelvra::HandleOf(closed.InsertSwatch(*closed.Groups()[0], -1));
    documents.Close(closed);
    EXPECT_EQ(documents.Current(), nullptr);
    EXPECT_EQ(documents.All(), std::vector<Document*>{&kept});
    EXPECT_EQ(documents.Find(handle), nullptr);
    EXPECT_EQ(documents.OwnerOf(list), nullptr);
    EXPECT_EQ(documents.OwnerOf(swatch), nullptr);
    documents.Close(kept);
    EXPECT_TRUE(documents.All().empty());
}

TEST(DocumentListTest, ClosingAnotherDocumentKeepsTheCurrentOne) {
    DocumentList documents;
    Document& other = documents.New("other");
    Document& current = documents.New("current");
    documents.Close(other);
    EXPECT_EQ(documents.Current(), &current);
}

TEST(DocumentListTest, ObjectsAreFoundInTheDocumentThatHasThem) {
    DocumentList documents;
    Document& a = documents.New("a");
    Document& b = documents.New("b");
    const KVSwatchGroupRef group = kelvra::HandleOf(b.InsertGroup(-1));
    const KVSwatchRef swatch = kelvra::HandleOf(a.InsertSwatch(*a.Groups()[0], -1));
    const KVCustomColorHandle color = kelvra::HandleOf(*b.NewCustomColor(u"c", KVCustomColor{}));
    EXPECT_EQ(documents.Find(a.Handle()), &a);
    EXPECT_EQ(documents.OwnerOf(b.SwatchList()), &b);
    EXPECT_EQ(documents.OwnerOf(group), &b);
    EXPECT_EQ(documents.OwnerOf(swatch), &a);
    EXPECT_EQ(documents.OwnerOf(color), &b);
}

TEST(DocumentListTest, NullMeansTheCurrentDocumentAndNoneIsNoDocument) {
    DocumentList documents;
    Document* found = reinterpret_cast<Document*>(&documents);
    EXPECT_EQ(documents.Resolve(static_cast<KVSwatchListRef>(nullptr), found), kZPNoDocumentErr);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(documents.Resolve(static_cast<KVDocumentHandle>(nullptr), found), kZPNoDocumentErr);
    Document& a = documents.New("a");
    Document& b = documents.New("b");
    EXPECT_EQ(documents.Resolve(static_cast<KVSwatchListRef>(nullptr), found), kZPNoErr);
    EXPECT_EQ(found, &b);
    EXPECT_EQ(documents.Resolve(a.SwatchList(), found), kZPNoErr);
    EXPECT_EQ(found, &a);
    EXPECT_EQ(documents.Resolve(a.Handle(), found), kZPNoErr);
    EXPECT_EQ(found, &a);
    EXPECT_EQ(documents.Resolve(reinterpret_cast<KVSwatchListRef>(a.Handle()), found), kZPBadParameterErr);
    EXPECT_EQ(documents.Resolve(reinterpret_cast<KVDocumentHandle>(a.SwatchList()), found), kZPBadParameterErr);
    EXPECT_EQ(found, nullptr);
}

TEST(DocumentListTest, AHiddenDocumentIsOpenButNeitherTheUsersNorMadeCurrent) {
    DocumentList documents;
    Document& mine = documents.New("mine");
    Document& library = documents.AddHidden(std::make_unique<Document>("Brights.ose"));
    EXPECT_EQ(documents.Current(), &mine);
    EXPECT_TRUE(documents.IsHidden(library));
    EXPECT_FALSE(documents.IsHidden(mine));
    EXPECT_EQ(documents.All(), (std::vector<Document*>{&mine, &library}));
    EXPECT_EQ(documents.Find(library.Handle()), &library);
    EXPECT_EQ(documents.OwnerOf(library.SwatchList()), &library);
    documents.MakeCurrent(library);
    EXPECT_EQ(documents.Current(), &library);
    documents.Close(library);
    EXPECT_EQ(documents.Current(), nullptr);
    EXPECT_EQ(documents.All(), std::vector<Document*>{&mine});
}

TEST(DocumentListTest, NoneCanBeMadeCurrent) {
    DocumentList documents;
    Document& mine = documents.New("mine");
    documents.MakeNoneCurrent();
    EXPECT_EQ(documents.Current(), nullptr);
    Document* found = nullptr;
    EXPECT_EQ(documents.Resolve(KVDocumentHandle(nullptr), found), kZPNoDocumentErr);
    EXPECT_EQ(documents.Find(mine.Handle()), &mine);
}

}  // namespace
