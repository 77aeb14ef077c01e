#include "formats/svg/writer.h"

#include "formats/svg/drawing_source.h"
#include "formats/svg/write/visible_text.h"

namespace svg {

namespace {

constexpr char kMark[] = "\xEF\xBB\xBF";

// Puts the references to the drawing's own entities back, where what stands for them was not changed.
class FileText {
public:
    explicit FileText(const DrawingSource& source) : m_source(source), m_next(source.entityUses().begin()) {
        m_bytes.reserve(source.text().size() + 4096);
        if (source.hadMark()) m_bytes = kMark;
    }

    void keep(std::size_t from, std::size_t to) {
        const auto end = m_source.entityUses().end();
        while (m_next != end && m_next->offset < from) ++m_next;
        for (; m_next != end && m_next->offset + m_next->length <= to; ++m_next) {
            m_bytes.append(m_source.text(), from, m_next->offset - from);
            m_bytes += '&' + m_next->name + ';';
            from = m_next->offset + m_next->length;
        }
        m_bytes.append(m_source.text(), from, to - from);
    }
    void put(const std::string& text) { m_bytes += text; }

    std::string take() { return std::move(m_bytes); }

private:
    const DrawingSource& m_source;
    std::vector<EntityUse>::const_iterator m_next;
    std::string m_bytes;
};

std::vector<TextEdit> editsUnder(const ADocument& document, AViewFilter& filter, const std::string& text) {
    const SourceElements elements(text);
    const LeftOut leftOut(document, filter, elements);
    return leftOut.any() ? editsUnder(text, elements, leftOut) : std::vector<TextEdit>();
}

}  // namespace

std::optional<std::string> writeDrawing(const ADocument& document, AViewFilter* filter, std::string& error) {
    const auto* source = dynamic_cast<const DrawingSource*>(document.getGeometrySource());
    if (!source) {
        error = "it was not read from a drawing";
        return std::nullopt;
    }
    std::vector<TextEdit> edits;
    try {
        if (filter) edits = editsUnder(document, *filter, source->text());
    } catch (const CopiesGrow&) {
        error = "the copies of what it repeats would take more than 1 GiB";
        return std::nullopt;
    }
    FileText file(*source);
    applyEdits(
        edits, 0, source->text().size(), [&](std::size_t from, std::size_t to) { file.keep(from, to); },
        [&](const std::string& text) { file.put(text); });
    return file.take();
}

}  // namespace svg
