#ifndef TAVRIN_FUZZ_FUZZINPUT_H
#define TAVRIN_FUZZ_FUZZINPUT_H

// Decodes the fuzzer's bytes into the values a host could pass: coordinates that are
// mostly inside the picture with the awkward ones mixed in (NaN, infinities, huge,
// denormal, just outside an edge), view sizes including zero and negative ones, vertex
// counts around every limit, enumeration values inside and outside their tables. An
// exhausted input reads as zeros.

#include <Tavrin/TavrinTypes.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool empty() const { return m_pos >= m_size; }

    std::uint8_t byte() { return empty() ? 0 : m_data[m_pos++]; }
    bool flag() { return (byte() & 1) != 0; }

    std::uint32_t u32()
    {
        std::uint32_t v = 0;
        for (int i = 0; i < 4; ++i) {
            v = (v << 8) | byte();
        }
        return v;
    }

    /// One of `n` choices.
    unsigned pick(unsigned n) { return n == 0 ? 0 : byte() % n; }

    /// A coordinate: mostly inside the picture or just past an edge, sometimes a special
    /// value or raw bits.
    float coord()
    {
        const std::uint8_t sel = byte();
        switch (sel % 8) {
        case 0:
        case 1:
        case 2:
        case 3:
            // 0 .. 1.02 in steps of 1/250: edges and values just outside are reachable.
            return static_cast<float>(byte()) / 250.0f;
        case 4:
            return static_cast<float>(static_cast<std::int8_t>(byte())) / 1000.0f + 0.5f;
        case 5:
            return special();
        case 6: {
            const std::uint32_t bits = u32();
            float v;
            std::memcpy(&v, &bits, sizeof v);
            return v;
        }
        default:
            return static_cast<float>(static_cast<std::int8_t>(byte())) / 100.0f;
        }
    }

    tagTAVRIN_POINT point() { return tagTAVRIN_POINT{coord(), coord()}; }

    /// A drag end near `from`, or anywhere.
    tagTAVRIN_POINT near(const tagTAVRIN_POINT& from)
    {
        if (byte() % 4 == 0) {
            return point();
        }
        const float dx = static_cast<float>(static_cast<std::int8_t>(byte())) / 400.0f;
        const float dy = static_cast<float>(static_cast<std::int8_t>(byte())) / 400.0f;
        return tagTAVRIN_POINT{from.x + dx, from.y + dy};
    }

    float special()
    {
        static const float values[] = {
            0.0f, -0.0f, 1.0f, 0.5f, 0.02f, 0.9f, 0.99f, 1.0000001f, -1e-7f,
            std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::quiet_NaN(),
            std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
            1e30f, -1e30f, FLT_MAX, -FLT_MAX, 1.7e38f, -1.7e38f, 3e38f, -3e38f, 3e9f, -3e9f,
            std::numeric_limits<float>::denorm_min(), -std::numeric_limits<float>::denorm_min(),
            FLT_MIN, 1e-30f, 16777216.0f, 0.0001f, 0.001f, 0.1f, 0.18f};
        return values[pick(sizeof values / sizeof values[0])];
    }

    /// A view dimension in pixels.
    int viewSize()
    {
        static const int values[] = {0, -1, -640, 1, 2, 3, 7, 16, 640, 480, 1000, 1920, 1080,
                                     65535, 1 << 24, INT_MAX, INT_MIN, 300, 500, 17};
        const std::uint8_t sel = byte();
        if (sel % 4 == 3) {
            return static_cast<int>(static_cast<std::int16_t>(u32()));
        }
        return values[(sel / 4) % (sizeof values / sizeof values[0])];
    }

    /// A vertex count around the limits (0, 1, 2, 4, 10, 20 and one past each) or any.
    unsigned count()
    {
        static const unsigned values[] = {0, 1, 2, 3, 4, 5, 9, 10, 11, 19, 20, 21, 64, UINT_MAX,
                                          0x80000000u};
        const std::uint8_t sel = byte();
        if (sel % 8 == 7) {
            return u32();
        }
        return values[(sel / 8) % (sizeof values / sizeof values[0])];
    }

    /// An enumeration value: in the table, just past it, or anything.
    unsigned enumValue()
    {
        static const unsigned values[] = {0, 1, 2, 3, 4, 7, 0x7fffffffu, 0xffffffffu, 0x80000000u};
        const std::uint8_t sel = byte();
        if (sel % 8 == 7) {
            return u32();
        }
        return values[(sel / 8) % (sizeof values / sizeof values[0])];
    }

    /// A vertex index for selection: 0 .. 21, or anything.
    unsigned index()
    {
        const std::uint8_t sel = byte();
        if (sel >= 240) {
            return u32();
        }
        return sel % 22;
    }

    /// A slot index: -2 .. 20, or anything.
    int slot()
    {
        const std::uint8_t sel = byte();
        if (sel >= 240) {
            return static_cast<int>(u32());
        }
        return static_cast<int>(sel % 23) - 2;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_pos = 0;
};

#endif  // TAVRIN_FUZZ_FUZZINPUT_H
