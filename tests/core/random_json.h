#pragma once

#include <random>
#include <string>

namespace lumisk::test {

/// A document with all kinds of values, members, escapes, numbers and white space.
std::string randomJson(std::mt19937& random);

/// A number literal; every form and length occurs.
std::string randomNumber(std::mt19937& random);

}  // namespace lumisk::test
