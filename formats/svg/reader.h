// Reads SVG drawings into documents.
//
//     std::string error;
//     std::unique_ptr<ADocument> document = svg::readDrawing("harbour.svg", error);
//     if (!document) std::cerr << error << '\n';   // harbour.svg:12: an end tag does not match its start tag
//
// Drawings are untrusted: nesting, entities and repetition are bounded, nothing outside the file is opened.
// Compressed drawings (.svgz) are unpacked, whatever their name.
#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "kzcore/document/document.h"

namespace svg {

// A reading, for other threads: how far it is, and that it is not wanted any more.
struct ReadingWatch {
    std::atomic<double> done = 0;  // of 1
    std::atomic<bool> cancelled = false;
};

// Null, and `error` is one line "FILE:LINE: reason" ("FILE: reason" where no line applies), when the file
// cannot be read or is not a drawing.
std::unique_ptr<ADocument> readDrawing(const std::filesystem::path& file, std::string& error,
                                       ReadingWatch* watch = nullptr);

// The same from memory; `name` stands for the file in errors.
std::unique_ptr<ADocument> readDrawingBytes(std::string bytes, std::string_view name, std::string& error);

}  // namespace svg
