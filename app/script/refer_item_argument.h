// Names the item that a colour tool is started on.
#pragma once

#include <string>

#include "kzcore/document/document.h"

namespace app {

// color:NAME is the document's colour of that name; fill:ID the colour of the object's solid fill, else its
// brush item; stroke:ID the colour of its pen, else its brush item. Raises Failure when there is none.
AReferItem* findReferItem(ADocument& document, const std::string& text);

// The same, but a text of none of the kinds is a colour's name.
AReferItem* findReferItemOrColor(ADocument& document, const std::string& text);

}  // namespace app
