// The name by which the host knows the plug-in's bundle, its preference panel among other things.
#pragma once

constexpr const char* kBundleIdentifier = "org.wren.Declaration";
