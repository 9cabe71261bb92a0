// What the instrument's corrections do not reach.
#pragma once

#include <string>

#include "service/service.hpp"

namespace kavo_app {

/// The services on which such settings have an effect, as a sentence lists them.
std::string ServicesThatHeed(SettingSet settings);

/// That what a call measures is taken as measured although the instrument is set to correct it;
/// empty when it is not set so, or when the call measures nothing of the kind.
std::string UncorrectedWarning(const Service& service, const Inputs& in);

}  // namespace kavo_app
