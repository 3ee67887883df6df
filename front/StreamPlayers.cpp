#include "StreamPlayers.h"

#include "HubURL.h"
#include "StreamPlayer.h"

using namespace Qt::StringLiterals;

namespace quillmere {

std::shared_ptr<VideoPlayer> createStreamPlayer(Clock& clock)
{
    return std::make_shared<StreamPlayer>(VideoOptions{hubCertificates(), u"Quillmere Television"_s}, clock);
}

} // namespace quillmere
