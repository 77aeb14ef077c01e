// Frames: what the server and the process of a session tell each other over a socket.
//
// offset  width  field
//      0      4  length of the payload, in this machine's byte order
//      4      4  number of the call that it belongs to; 0: an event, which nobody asked for
//      8      1  kind
//      9         payload
//
// To the process:  L a script line · F NAME, a line feed, the bytes of a file that was dropped
//                  T a tile: DRAWING SHOWN SCALE SIDE X Y · D the drawing as a file, "all" or "shown" · P a picture, WIDTH
// From it:         + the answer · - the reason why there is none · ! what the user is told (an event)
#pragma once

#include <cstdint>
#include <string>

namespace app::web {

struct Frame {
    std::uint32_t call = 0;
    char kind = 0;
    std::string payload;
};

// False when the other side is gone or the payload is longer than any may be.
bool sendFrame(int socket, const Frame& frame);
// False when the other side is gone. Raises bad_alloc.
bool receiveFrame(int socket, Frame& frame);

}  // namespace app::web
