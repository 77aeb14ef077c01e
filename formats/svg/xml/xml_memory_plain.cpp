// The library's own memory: where large blocks gain nothing, and under a sanitizer, which has to see every
// piece by itself.
#include "formats/svg/xml/xml_memory.h"

namespace svg {

bool useLargeXmlMemory() {
    return true;
}

void releaseXmlMemory() {}

}  // namespace svg
