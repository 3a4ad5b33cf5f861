#include "contract.h"

#include "platform/forwarding_platform.h"
#include "support/hand_moved_platform.h"

namespace tarvo::test {
namespace {

// A forwarding platform in front of a forwarding platform, so that a call that is not handed on
// shows.
class Chain : public ForwardingPlatform {
 public:
  Chain() : ForwardingPlatform(static_cast<Platform&>(inner_)), inner_(SystemPlatform()) {}

 private:
  ForwardingPlatform inner_;
};

const PlatformKind kKinds[] = {
    {"System",
     [] { return std::shared_ptr<Platform>(std::shared_ptr<Platform>(), &SystemPlatform()); }},
    {"Forwarding", [] { return std::make_shared<Chain>(); }},
    {"HandMoved", [] { return std::make_shared<HandMovedPlatform>(); }},
};

INSTANTIATE_TEST_SUITE_P(Every, PlatformContract, ::testing::ValuesIn(kKinds),
                         [](const auto& kind) { return std::string(kind.param.name); });

}  // namespace
}  // namespace tarvo::test
