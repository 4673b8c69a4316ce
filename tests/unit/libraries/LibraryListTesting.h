// The library list on a real tree in this process: host folders mapped to
// folders of the tree, preferences written as the host keeps them, and a
// factory that numbers its libraries from 30000 as the plug-in's does.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "CKVLibraryList.h"
#include "LibraryTesting.h"

namespace library_testing {

// Host folder types the tests map.
inline constexpr std::int32_t kApplicationFolder = 33;
inline constexpr std::int32_t kSecondApplicationFolder = 73;
inline constexpr std::int32_t kUserFolder = 88;
inline constexpr std::int32_t kSecondUserFolder = 89;
inline constexpr const char* kPrefix = "KVSwatchLibPersistentPrefix";

// Makes plain libraries, numbered from 30000 whether or not the list keeps
// them; refuses or throws for the paths a test names.
struct TestFactory {
    static void Make(CKVLibrary*& library, KVFilePathRef path, bool isFolder);
    static void Reset();

    static inline std::int32_t nextId = 30000;
    static inline std::set<std::string> refused;   // paths answered with null
    static inline std::set<std::string> throwing;  // paths answered with kv::Error
    static inline std::vector<std::string> asked;  // every path, "F " before a folder's
};

class LibraryListTest : public LibraryTest {
protected:
    void SetUp() override;
    void TearDown() override;

    // Maps a host folder type to a folder of the tree (made unless `make` is false).
    void MapFolder(std::int32_t type, const std::string& relative, bool make = true);
    // The preferences file, as a JSON object text.
    void WritePreferences(const std::string& json);
    // Remembers the files as the host's "open other library" does.
    void Remember(const std::vector<std::string>& relatives);
    // Init with the test factory; 0 expected.
    void InitList();

    // The visible libraries by index, as paths relative to the tree ("?"
    // for a path outside it).
    std::vector<std::string> Listed();
    std::string Relative(KVFilePathRef path) const;
    CKVLibrary* Find(const std::string& relative);

    int context_ = 0;
    std::unique_ptr<CKVLibraryList> list_;
};

}  // namespace library_testing
