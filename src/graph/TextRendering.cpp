#include <Tavrin/TextRendering.h>

#include <atomic>

namespace Tavrin {

namespace {

// Constant-initialised, so it is valid before any static constructor runs.
std::atomic<bool> g_textRendering{false};
std::atomic<bool> g_textOutline{false};

}  // namespace

void TextRendering::SetEnabled(bool enabled) { g_textRendering.store(enabled, std::memory_order_relaxed); }

bool TextRendering::IsEnabled() { return g_textRendering.load(std::memory_order_relaxed); }

void TextRendering::SetOutline(bool outline) { g_textOutline.store(outline, std::memory_order_relaxed); }

bool TextRendering::IsOutlined() { return g_textOutline.load(std::memory_order_relaxed); }

}  // namespace Tavrin
