#pragma once

namespace veloran {

/// Tells the processor that the upper halves of this thread's vector registers are not in use. As
/// long as it believes otherwise, plain floating-point arithmetic is several times slower on Intel's
/// processors: each instruction has to carry the upper half along. Libraries leave them in use (Qt's
/// hash of strings, fills with AVX2), and a new thread inherits the state. To be called before
/// arithmetic that lasts; takes a nanosecond or so. Does nothing on processors without AVX.
void clearUpperVectorHalves();

}  // namespace veloran
