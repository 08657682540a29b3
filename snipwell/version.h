#pragma once

namespace snipwell {

constexpr char kVersion[] = SNIPWELL_VERSION;

}  // namespace snipwell
