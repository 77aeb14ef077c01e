// Archives from anywhere. The input's first byte chooses how it is met: even, as a whole archive; odd, as the
// content of one, whose length and checksum are then right, so that what stands behind them is reached.
//
// Beside not crashing: what was read without an error is stored and read again to the same bytes.
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "tests/support/archive_node.h"

namespace {

using Object = std::unique_ptr<ARoot>;

void require(bool holds, const char* rule) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", rule);
    std::abort();
}

Bytes stored(const ARoot& object) {
    AArchive out;
    out.orbiWriteObject(&object);
    require(out.getError().empty(), "what was read can be stored");
    return out.takeBytes();
}

void storeAndReadAgain(const ARoot& object) {
    const Bytes bytes = stored(object);
    AArchive in(bytes);
    const Object again(in.orbiReadObject());
    require(again && in.getError().empty(), "what was stored can be read");
    require(stored(*again) == bytes, "storing again gives the same bytes");
}

// Unlike a class, this follows no layout: records and values in the order of a few bits.
void readLoosely(AArchive& in, unsigned steps) {
    for (; steps != 0; steps >>= 3) {
        int number = 0x5a5a5a5a;
        AString text(_T("before"));
        switch (steps & 7) {
            case 1:
                in.TagStart();
                break;
            case 2:
                in.Tag(0);
                break;
            case 3:
                in.Tag(1);
                break;
            case 4:
                in.TagEnd();
                break;
            case 5:
                in >> number;
                break;
            case 6:
                in >> text;
                break;
            default:
                Object(in.orbiReadObject()).reset();
                break;
        }
        if (in.getError().empty()) continue;
        in >> number >> text;
        require(number == 0x5a5a5a5a || (steps & 7) == 5, "no number is read after an error");
    }
}

void readObjects(AArchive& in, std::size_t size) {
    for (std::size_t i = 0; i < size / 8 && in.getError().empty(); ++i) {
        const Object object(in.orbiReadObject());
        require(!object || in.getError().empty(), "an error gives no object");
        if (object) storeAndReadAgain(*object);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool registered = (ATestNode::registerClass(), true);
    if (!registered || size < 5) return 0;
    const Bytes rest(data + 5, data + size);
    const unsigned steps = data[1] | data[2] << 8 | data[3] << 16 | static_cast<unsigned>(data[4]) << 24;
    AArchive in(data[0] % 2 == 0 ? rest : sealed(rest));
    readLoosely(in, steps);
    readObjects(in, size);
    return 0;
}
