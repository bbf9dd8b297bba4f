#ifndef TAVRIN_TOOLS_DEMO_SELFTEST_H
#define TAVRIN_TOOLS_DEMO_SELFTEST_H

// tavrin-demo --self-test: drives the shown window with synthetic mouse and key events,
// as a user would, and checks what the host reads back.

#include <QString>

namespace Tavrin {
namespace demo {

class MainWindow;
class SceneDocument;

struct SelfTestFiles {
    /// The scene to edit. Its first figure must be a polygon region of at least three
    /// vertices with no other figure over its first vertex or its centre.
    QString scene;
    /// Where to write the view's framebuffer after the edits (PNG); optional.
    QString grab;
    /// Where to save the edited scene; optional.
    QString save;
};

/// Runs the script on the shown `window`; prints one line per failed check and a
/// summary. Returns 0 when every check passed, 1 otherwise.
int runSelfTest(MainWindow& window, SceneDocument& document, const SelfTestFiles& files);

}  // namespace demo
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_DEMO_SELFTEST_H
