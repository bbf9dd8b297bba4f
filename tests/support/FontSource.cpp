#include "support/FontSource.h"

#include <fstream>
#include <sstream>

namespace rec {

namespace {

bool isArt(const std::string& line)
{
    return !line.empty() && line.find_first_not_of("#.") == std::string::npos;
}

FontSource parse(std::istream& in)
{
    FontSource font;
    std::vector<std::string>* current = nullptr;
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == ';') {
            continue;
        }
        if (isArt(line)) {
            if (current != nullptr) {
                current->push_back(line);
            }
            continue;
        }
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "cell") {
            words >> font.width >> font.height;
        } else if (word == "descent") {
            words >> font.descent;
        } else if (word == "placeholder") {
            current = &font.placeholder;
        } else if (word == "char") {
            std::string code;
            words >> code;
            current = &font.glyphs[std::stoi(code, nullptr, 16)];
        }
    }
    return font;
}

}  // namespace

const FontSource& fontSource()
{
    static const FontSource font = [] {
        std::ifstream in(TAVRIN_FONT_SOURCE);
        return in ? parse(in) : FontSource();
    }();
    return font;
}

std::string readBack(const RasterText& text)
{
    const FontSource& font = fontSource();
    std::string out;
    for (const Bitmap& b : text.glyphs()) {
        std::vector<std::string> art;
        bool clearBeyond = static_cast<int>(b.rows.size()) == font.height;
        for (const std::string& row : b.rows) {
            art.push_back(row.substr(0, static_cast<std::size_t>(font.width)));
            clearBeyond = clearBeyond && row.find('#', static_cast<std::size_t>(font.width)) == std::string::npos;
        }
        char read = kUnreadable;
        if (clearBeyond && art == font.placeholder) {
            read = kPlaceholderRead;
        }
        for (const auto& glyph : font.glyphs) {
            if (clearBeyond && art == glyph.second) {
                read = static_cast<char>(glyph.first);
            }
        }
        out += read;
    }
    return out;
}

}  // namespace rec
