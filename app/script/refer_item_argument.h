// Names the item that a colour tool is started on.
#pragma once

#include <string>

#include "kzcore/document/document.h"

namespace app {

// color:NAME is the document's colour of that name; fill:ID the colour of the object's solid fill, else its
// brush item; stroke:ID the colour of its pen, else its brush item. Raises Failure when there is none.
//
// NAME is a colour's name, for an RGB colour any of its CSS names or #rrggbb. An exact name goes before one
// that differs in case, and #rrggbb means the RGB colour. CLASS/NAME, as in "Spot Color/red", tells colours of
// one name apart; what stays ambiguous raises Failure with the candidates.
AReferItem* findReferItem(ADocument& document, const std::string& text);

// The same, but a text of none of the kinds is a colour's name.
AReferItem* findReferItemOrColor(ADocument& document, const std::string& text);

}  // namespace app
