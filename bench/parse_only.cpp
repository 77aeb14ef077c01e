// What the whole-process benchmark compares with: reads a file and parses its XML, nothing else.
#include <cstdio>
#include <pugixml.hpp>

int main(int argc, char** argv) {
    pugi::xml_document document;
    if (argc != 2 || !document.load_file(argv[1])) {
        std::fprintf(stderr, "usage: parse_only FILE.svg\n");
        return 2;
    }
    return 0;
}
