// Writes a drawing of a given number of objects, for the benchmarks: fifty layers, groups, every basic shape,
// paint by attribute, by style, by class and by inheritance, thousands of colours. The same number gives the
// same bytes.
//
//     make_drawing 100000 > drawing.svg
//
// The object "first" is a rectangle.
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace {

class Writer {
public:
    explicit Writer(int objects) : m_left(objects) {}

    void write() {
        std::printf(
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" "
            "xmlns:inkscape=\"http://www.inkscape.org/namespaces/inkscape\" "
            "width=\"4000\" height=\"4000\" viewBox=\"0 0 4000 4000\">\n"
            "<style>.wall{fill:#445566;stroke:black}.pipe{fill:none;stroke:#0077cc}#first{fill:crimson}</"
            "style>\n");
        const int perLayer = (m_left + kLayers - 1) / kLayers;
        for (int layer = 1; layer <= kLayers && m_left > 0; ++layer) {
            std::printf("<g inkscape:groupmode=\"layer\" inkscape:label=\"Layer %d\" id=\"layer%d\">\n",
                        layer, layer);
            for (int end = m_left - perLayer; m_left > 0 && m_left > end;) writeGroup();
            std::printf("</g>\n");
        }
        std::printf("</svg>\n");
    }

private:
    static constexpr int kLayers = 50;
    static constexpr int kGroupSize = 20;

    unsigned below(unsigned limit) { return m_random() % limit; }

    // A group of twenty objects, itself one of them; the last few objects stand alone.
    void writeGroup() {
        if (m_left < kGroupSize) return writeObject();
        --m_left;
        std::printf("<g fill=\"#%06x\" id=\"g%d\">\n", below(0x1000000), ++m_serial);
        for (int i = 1; i < kGroupSize; ++i) writeObject();
        std::printf("</g>\n");
    }

    std::string paint() {
        char text[80] = "";
        const unsigned color = below(10000) * 1657 % 0x1000000;  // ten thousand colours
        switch (below(5)) {
            case 0:
                std::snprintf(text, sizeof text, " fill=\"#%06x\"", color);
                break;
            case 1:
                std::snprintf(text, sizeof text, " style=\"fill:#%06x;stroke:#%06x;stroke-width:2\"", color,
                              color / 2);
                break;
            case 2:
                return " class=\"wall\"";
            case 3:
                return " class=\"pipe\" stroke-width=\"0.5\"";
            default:
                break;  // inherits
        }
        return text;
    }

    void writeObject() {
        --m_left;
        const bool first = m_serial < 2 && !m_wroteFirst;
        const std::string id = first ? "first" : "o" + std::to_string(++m_serial);
        const unsigned x = below(4000);
        const unsigned y = below(4000);
        const std::string fill = paint();
        switch (first ? 0 : below(6)) {
            case 0:
            case 1:
                std::printf("<rect id=\"%s\" x=\"%u.25\" y=\"%u\" width=\"%u\" height=\"12.5\"%s/>\n",
                            id.c_str(), x, y, 5 + below(60), fill.c_str());
                break;
            case 2:
                std::printf("<circle id=\"%s\" cx=\"%u\" cy=\"%u\" r=\"%u.5\"%s/>\n", id.c_str(), x, y,
                            2 + below(20), fill.c_str());
                break;
            case 3:
                std::printf("<path id=\"%s\" d=\"M%u %uc10 0 20 5 20 15s-5 20-15 20l-12.5-%u z\"%s/>\n",
                            id.c_str(), x, y, 3 + below(9), fill.c_str());
                break;
            case 4:
                std::printf("<polygon id=\"%s\" points=\"%u,%u %u,%u %u,%u\"%s/>\n", id.c_str(), x, y, x + 20,
                            y + 5, x + 8, y + 25, fill.c_str());
                break;
            default:
                std::printf("<text id=\"%s\" x=\"%u\" y=\"%u\"%s>room %u</text>\n", id.c_str(), x, y,
                            fill.c_str(), below(1000));
        }
        m_wroteFirst = m_wroteFirst || first;
    }

    std::mt19937 m_random{7};
    int m_left;
    int m_serial = 0;
    bool m_wroteFirst = false;
};

}  // namespace

int main(int argc, char** argv) {
    const int objects = argc == 2 ? std::atoi(argv[1]) : 0;
    if (objects < 1) {
        std::fprintf(stderr, "usage: make_drawing OBJECTS > drawing.svg\n");
        return 2;
    }
    Writer(objects).write();
    return std::fflush(stdout) == 0 ? 0 : 2;
}
