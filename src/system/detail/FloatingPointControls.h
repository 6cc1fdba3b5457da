// The floating-point control state of this thread, named by the flags of a control word.
#pragma once

namespace Velmora::Tessara::ZQ::Core {
class ZQString;
}

namespace Velmora::Tessara::ZQ::Core::detail {

/// The control word, in the layout whose flag names the text uses, of a given MXCSR.
unsigned ControlWordFromMXCSR(unsigned mxcsr);

/// Empties `text` and writes the names of the flags set in the current control word,
/// joined by "|".
void FloatingPointControlsText(ZQString &text);

} // namespace Velmora::Tessara::ZQ::Core::detail
