#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo::test {

// That every entry of a settings file that had one of other keys before is there, byte for byte,
// and that nothing was added but entries of these keys, whole or in part.
void ExpectOtherRecordsSame(std::string_view now, std::string_view before,
                            const std::vector<std::string>& keys);

// That no two entries have the same key.
void ExpectNoKeyTwice(std::string_view file);

}  // namespace tarvo::test
