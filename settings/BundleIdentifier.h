// The host's name for the plug-in's bundle, used for the preference panel among others.
#pragma once

constexpr const char* kBundleIdentifier = "org.wren.Declaration";
