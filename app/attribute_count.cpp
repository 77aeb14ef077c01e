#include "app/attribute_count.h"

#include <algorithm>
#include <vector>

#include "kzcore/document/config.h"
#include "kzcore/document/document.h"

namespace app {

namespace {

std::string loadStructure(const AClassInfo& classInfo) {
    AString structure;
    AConfig().getClassDisplayStructure(classInfo.name, structure, 1);
    return structure.toUtf8();
}

std::string categoryOf(const std::string& structure) {
    return structure.substr(0, structure.find('/'));
}

const char* bitmapKind(int colorModel) {
    switch (colorModel) {
        case ABitmap::rgb:
            return "RGB Bitmap";
        case ABitmap::blackAndWhite:
            return "Black and White Bitmap";
        case ABitmap::grayscale:
            return "Grayscale Bitmap";
        case ABitmap::cmyk:
            return "CMYK Bitmap";
        case ABitmap::indexed:
            return "Indexed Color Bitmap";
        case ABitmap::lab:
            return "LAB Bitmap";
        default:
            return nullptr;
    }
}

// An entry of the tree: its count, and how many containers around the object at hand count for it.
struct Entry {
    std::size_t count = 0;
    std::size_t around = 0;
};

class Counter {
public:
    explicit Counter(const ADocView& view) {
        std::vector<const AParent*> layers;
        for (const ADatabase* database :
             {static_cast<const ADatabase*>(view.m_database),
              static_cast<const ADatabase*>(view.getDocument()->getSecondaryDatabase())}) {
            for (ARoot* layer : database->children) layers.push_back(static_cast<ALayer*>(layer));
        }
        namePaint(layers);
        for (const AParent* layer : layers) {
            if (static_cast<const ALayer*>(layer)->IsLayerEditable()) walk(*layer);
        }
    }

    AttributeCounts counts() const {
        AttributeCounts counts;
        for (const auto& [path, entry] : m_entries) {
            if (entry.count > 0) counts.emplace(path, entry.count);
        }
        for (const auto& [path, first] : m_again) {
            if (first->count > 0) counts.emplace(path, first->count);
        }
        return counts;
    }

private:
    using Entries = std::vector<Entry*>;
    struct Level {
        const AParent* parent;
        int next = 0;
        Entries entries;          // that the container counts for
        bool addsEffect = false;  // to those around the object at hand
    };

    static bool isReached(const AObject& object) {
        return !object.isUnselectable() && !object.getObjectFlags(kObjectHidden);
    }
    static const AParent* openContainer(AObject& object) {
        const AParent* parent = object.asParent();
        return parent && !parent->hasOption(kOptionClosed) ? parent : nullptr;
    }

    Entry& entry(const std::string& path) { return m_entries[path]; }
    const std::string& structureOf(const AClassInfo& classInfo) {
        const auto [known, isNew] = m_structures.try_emplace(&classInfo);
        if (isNew) known->second = loadStructure(classInfo);
        return known->second;
    }

    // Paint is called as the pages call it: in the order in which they meet the objects, level by level. Two
    // paints of one name get numbers.
    void namePaint(const std::vector<const AParent*>& layers) {
        std::vector<const AParent*> work;
        for (const AParent* layer : layers) {
            if (static_cast<const ALayer*>(layer)->IsLayerEditable()) work.push_back(layer);
        }
        // The children of all containers of one depth come before those of the next.
        for (std::size_t i = 0; i < work.size(); ++i) {
            for (ARoot* child : work[i]->children) {
                auto& object = static_cast<AObject&>(*child);
                if (!isReached(object)) continue;
                nameFill(object);
                nameStroke(object);
                if (const AParent* inner = openContainer(object)) work.push_back(inner);
            }
        }
    }

    void nameFill(const AObject& object) {
        const ABrush* brush = object.getBrush();
        const ABrushItem* item = brush ? brush->getBrushItem() : nullptr;
        if (!item) return;
        Entries& entries = m_fills[item];
        const auto* solid = dynamic_cast<const ASolidBrushItem*>(item);
        const std::string& structure = structureOf(item->getClassInfo());
        if (solid) {
            if (!entries.empty() || !solid->getColorItem()) return;
            const std::string colors = structure + "/" + structureOf(solid->getColorItem()->getClassInfo());
            entries = {&entry(structure), &entry(colors),
                       &entry(freeName(colors + "/" + solid->getColorItem()->getName().toUtf8()))};
        } else {
            // One entry for each object, and each is about all objects with the brush.
            const std::string path = freeName(structure + "/" + item->getName().toUtf8());
            if (entries.empty())
                entries = {&entry(structure), &entry(path)};
            else
                m_again.emplace_back(path, entries.back());
        }
    }

    void nameStroke(const AObject& object) {
        const APen* pen = object.getPen();
        const APenItem* item = pen ? pen->getPenItem() : nullptr;
        if (!item) return;
        Entries& entries = m_strokes[item];
        if (!entries.empty()) return;
        const std::string& structure = structureOf(item->getClassInfo());
        entries = {&entry(structure)};
        const AColorItem* color = item->getColorItem();
        if (!color) return;
        const std::string colors = structure + "/" + structureOf(color->getClassInfo());
        const std::string path = colors + "/" + color->getName().toUtf8();
        // Strokes of one name share an entry, which is about the first of them.
        const AColorItem* first = m_strokeColors.try_emplace(path, color).first->second;
        if (first == color) {
            entries.push_back(&entry(colors));
            entries.push_back(&entry(path));
        }
    }

    std::string freeName(const std::string& name) {
        int& number = m_numbers[name];
        std::string path = number == 0 ? name : name + "_" + std::to_string(number);
        ++number;
        while (!m_names.try_emplace(path, true).second) {
            path = name + "_" + std::to_string(number);
            ++number;
        }
        return path;
    }

    void walk(const AParent& layer) {
        m_layer = &entry(structureOf(layer.getClassInfo()));
        std::vector<Level> levels{{&layer, 0, {}, false}};
        while (!levels.empty()) {
            Level& level = levels.back();
            if (level.next == level.parent->children.GetCount()) {
                for (Entry* one : level.entries) --one->around;
                if (level.addsEffect) m_effects.pop_back();
                levels.pop_back();
                continue;
            }
            auto& object = static_cast<AObject&>(*level.parent->children.begin()[level.next++]);
            if (!isReached(object)) continue;
            const AParent* inner = openContainer(object);
            const bool addsEffect = inner && addEffect(*inner);
            Entries entries = entriesOf(object);
            for (Entry* one : entries) one->count += one->around == 0;
            if (!inner) continue;
            for (Entry* one : entries) ++one->around;
            levels.push_back({inner, 0, std::move(entries), addsEffect});
        }
    }

    // False when it is none, or there is one of its class around it.
    bool addEffect(const AParent& parent) {
        if (!isEffect(parent)) return false;
        Entry* effect = &entry(structureOf(parent.getClassInfo()));
        if (std::ranges::find(m_effects, effect) != m_effects.end()) return false;
        m_effects.push_back(effect);
        return true;
    }

    static bool isEffect(const AParent& parent) { return parent.getClassInfo().kind == AClassKind::effect; }

    // What the object counts for; nothing for one whose class users do not see.
    Entries entriesOf(const AObject& object) {
        const std::string& structure = structureOf(object.getClassInfo());
        if (structure.empty()) return {};
        Entries entries{m_layer};
        entries.insert(entries.end(), m_effects.begin(), m_effects.end());
        if (object.getClassInfo().kind != AClassKind::effect) entries.push_back(&entry(structure));
        if (const auto* bitmap = dynamic_cast<const ABitmap*>(&object)) {
            if (const char* kind = bitmapKind(bitmap->getColorModel()))
                entries.push_back(&entry(structure + "/" + kind));
        }
        const ABrush* brush = object.getBrush();
        if (!brush)
            entries.push_back(&m_noFill);
        else if (const auto found = m_fills.find(brush->getBrushItem()); found != m_fills.end())
            entries.insert(entries.end(), found->second.begin(), found->second.end());
        const APen* pen = object.getPen();
        const APenItem* item = pen ? pen->getPenItem() : nullptr;
        if (!item || item->getStyle() == APenItem::kStyleNone)
            entries.push_back(&m_noStroke);
        else if (const auto found = m_strokes.find(item); found != m_strokes.end())
            entries.insert(entries.end(), found->second.begin(), found->second.end());
        return entries;
    }

    std::unordered_map<std::string, Entry> m_entries;
    std::vector<std::pair<std::string, const Entry*>> m_again;  // further entries about the same
    std::unordered_map<const AClassInfo*, std::string> m_structures;
    Entry* m_layer = nullptr;  // of the object at hand
    Entries m_effects;         // around it
    std::unordered_map<const ABrushItem*, Entries> m_fills;
    std::unordered_map<const APenItem*, Entries> m_strokes;
    std::unordered_map<std::string, const AColorItem*> m_strokeColors;
    std::unordered_map<std::string, int> m_numbers;
    std::unordered_map<std::string, bool> m_names;
    Entry& m_noFill = entry(categoryOf(structureOf(*findClass(_T("ASolidBrushItem")))) + "/No fill");
    Entry& m_noStroke = entry(categoryOf(structureOf(*findClass(_T("APenItem")))) + "/No stroke");
};

}  // namespace

AttributeCounts countAttributes(const ADocView& view) {
    return Counter(view).counts();
}

}  // namespace app
