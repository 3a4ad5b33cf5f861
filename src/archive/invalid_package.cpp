#include "archive/invalid_package.h"

namespace tarvo {

InvalidPackage::InvalidPackage(std::string_view member, std::string_view predicate)
    : fault_{std::string(member), ""} {
  fault_.sentence.append("The member \"")
      .append(member)
      .append("\" ")
      .append(predicate)
      .append(".");
}

}  // namespace tarvo
