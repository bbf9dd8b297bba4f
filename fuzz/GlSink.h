#ifndef TAVRIN_FUZZ_GLSINK_H
#define TAVRIN_FUZZ_GLSINK_H

// The checking sink: the listener of the fake GL (tests/support/FakeGl.h) in the fuzz
// harness. Every call is checked, none recorded: finite arguments, batches well formed,
// only the capabilities and modes the library uses, display lists reserved before use.
// A check that fails aborts the run with a message, which libFuzzer reports as a crash.

namespace sink {

/// Starts a draw from a clean context: opaque white, identity, nothing enabled, no open
/// batch, no display list reserved.
void beginDraw();
/// A full draw has ended: the state must be back where `beginDraw` left it.
void expectRestored(const char* what);
/// A partial draw (a drawing helper called on its own) has ended: no open batch and no
/// display list left reserved; the render state it changed is forgotten.
void endPartialDraw(const char* what);

/// Aborts with a message naming the failed check.
[[noreturn]] void fail(const char* what, const char* detail);

}  // namespace sink

#define FUZZ_CHECK(cond, what)                                                         \
    do {                                                                               \
        if (!(cond)) {                                                                 \
            ::sink::fail(what, #cond);                                                 \
        }                                                                              \
    } while (0)

#endif  // TAVRIN_FUZZ_GLSINK_H
