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
    /// The scene to edit: any scene file. Every figure is grabbed by a vertex and whole,
    /// where a press can reach it past the figures over it (the others are reported as
    /// skipped), and read back; a figure is placed, relabelled and deleted; the scene is
    /// saved and opened again.
    QString scene;
    /// Where to write the view's framebuffer after the edits (PNG); optional.
    QString grab;
    /// Where to save the edited scene; a temporary file when empty.
    QString save;
};

/// Runs the script on the shown `window`; prints one line per failed check and a
/// summary. Returns 0 when every check passed, 1 otherwise.
int runSelfTest(MainWindow& window, SceneDocument& document, const SelfTestFiles& files);

}  // namespace demo
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_DEMO_SELFTEST_H
