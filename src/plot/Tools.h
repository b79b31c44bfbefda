// Small calculations for plots.
#pragma once

namespace Yul {

class Tools
{
public:
    /// A plain interval that cuts the range into about n parts: (max - min) / n rounded up, from 1 on to the
    /// next integer and below 1 to the next tenth, hundredth, thousandth or ten-thousandth.
    /// n       number of parts; taken as 1 when smaller.
    /// return  1 when the range is empty; a quotient below 0.0001 (negative ones too) as it stands.
    [[nodiscard]] static float calcInterval(float max, float min, int n);
};

} // namespace Yul
