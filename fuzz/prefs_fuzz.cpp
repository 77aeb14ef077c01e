// Preference files from anywhere. The input's first byte chooses how it is met: even, as a whole file; odd,
// as the content of an archive, whose length and checksum are then right, so that what stands behind them is
// reached.
//
// Beside not crashing: an object that was not loaded is as it was before, one that was is stored and loaded
// again as the same.
#include <cstdio>
#include <cstdlib>

#include "tests/support/stored_pair.h"
#include "tests/support/temp_folder.h"

namespace {

void require(bool holds, const char* rule) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", rule);
    std::abort();
}

Bytes stored(ARoot& object) {
    AArchive out;
    require(object.orbiSerialize(out) != 0 && out.getError().empty(), "the object can be stored");
    return out.takeBytes();
}

void write(const test::TempFolder& folder, const char* file, const Bytes& bytes) {
    folder.write(file, std::string(bytes.begin(), bytes.end()));
}

// Of a class of records, or of one with texts and objects inside.
template <class Object>
void readInto(Object& object, Object& again) {
    const Bytes before = stored(object);
    std::string problem;
    if (!APreferenceManager::readPrefs(&object, problem)) {
        require(stored(object) == before, "an object that was not loaded is as it was");
        require(!problem.empty(), "it is told why");
        return;
    }
    require(APreferenceManager::writePrefs(&object) == 1, "what was loaded can be stored");
    require(APreferenceManager::readPrefs(&again) == 1, "what was stored can be loaded");
    require(stored(again) == stored(object), "it is the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TempFolder folder;
    static const bool prepared =
        (ATestNode::registerClass(), APreferenceManager::setFolder(folder.path()), true);
    if (!prepared || size < 1) return 0;
    Bytes file(data + 1, data + size);
    if (data[0] % 2 != 0) file = sealed(file);
    write(folder, "AStoredPair.prefs", file);
    write(folder, "ATestNode.prefs", file);
    AStoredPair pair(11, 12), otherPair;
    readInto(pair, otherPair);
    ATestNode node, otherNode;
    node.number = 13;
    node.text = _T("before");
    node.child = std::make_unique<ATestNode>();
    readInto(node, otherNode);
    return 0;
}
