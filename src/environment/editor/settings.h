// The environment's settings, kept in section "Velant" of setting.ini in the
// save area: the Crash flag (1 while the editor works, 0 after an orderly
// end), the name of the project last opened, and the options.
#pragma once

#include <string>

double read_setting(const std::string& key, double fallback);
std::string read_setting_text(const std::string& key, const std::string& fallback);
void write_setting(const std::string& key, double value);
void write_setting_text(const std::string& key, const std::string& value);
