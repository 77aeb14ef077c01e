// A small drawing that has one of everything the tests ask for.
#pragma once

namespace test {

inline constexpr char kSea[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="80"
     xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape"
     xmlns:sodipodi="http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd">
  <defs><linearGradient id="glow"><stop offset="0" stop-color="white"/><stop offset="1" stop-color="gold"/>
    </linearGradient></defs>
  <g inkscape:groupmode="layer" inkscape:label="Sea">
    <rect id="hull" width="9" height="4" fill="red" stroke="black"/>
    <rect id="sail" width="4" height="9" fill="none" stroke="blue"/>
    <circle id="sun" r="5" fill="url(#glow)"/>
    <g id="crew"><rect id="cap" width="1" height="1" fill="red" stroke="url(#glow)"/></g>
  </g>
  <g inkscape:groupmode="layer" inkscape:label="Sky" sodipodi:insensitive="true">
    <rect id="cloud" width="9" height="4" fill="#123456"/>
  </g>
</svg>
)svg";

// One object, in a layer that is locked.
inline constexpr char kLockedHull[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg"
     xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape"
     xmlns:sodipodi="http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd">
  <g inkscape:groupmode="layer" sodipodi:insensitive="true"><rect id="hull"/></g>
</svg>
)svg";

}  // namespace test
