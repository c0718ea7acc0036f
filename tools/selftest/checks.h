// What is looked at, each into the report.
#pragma once

#include <windows.h>

#include "kelvo/features.h"
#include "tools/selftest/report.h"

namespace kelvo::selftest {

void DescribeSystem(Report& report) noexcept;
void CheckFeatures(GetFeatureFunction get_feature, Report& report) noexcept;
void CheckEffectsAndTime(GetFeatureFunction get_feature, Report& report) noexcept;
void CheckDecodingAndTime(GetFeatureFunction get_feature, Report& report) noexcept;
// `folder`, with a backslash at its end, is where a file may be made for a moment.
void CheckFiles(GetFeatureFunction get_feature, const wchar_t* folder, Report& report) noexcept;

}  // namespace kelvo::selftest
