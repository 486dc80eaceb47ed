#pragma once

// Kept as a type for the settings pages a later release may add; nothing calls it yet.
class SettingsBundleHelper {};
