// ZQCommDataHandler: the ZQMPT field; the operations belong to the deriving class.
#include <zqcore/parallel/ZQCommDataHandler.h>

namespace Velmora::Tessara::ZQ::Core {

ZQCommDataHandler::ZQCommDataHandler(ZQMPT *mpt) : boundMPT(mpt) {}

ZQCommDataHandler::~ZQCommDataHandler() = default;

} // namespace Velmora::Tessara::ZQ::Core
