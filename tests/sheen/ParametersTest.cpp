#include "sheen/Parameters.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

using namespace lx;

// The table as it was settled: index; key; name; label; minimum; maximum; step; default; interpolated.
static const char *const settled = R"(0;kSymmetry;Symmetry;Angular Symmetry;0;64;1;2;no
1;kHeight;Height;Depth;0;1;0;0.5;yes
2;kInnerSize0;InnerSize0;Width;0;1;0;0.3;yes
3;kInnerSize1;InnerSize1;Height;0;1;0;0.3;yes
4;kBorderSize0;BorderSize0;Horizontal Border;-1;1;0;-0.2;yes
5;kBorderSize1;BorderSize1;Vertical Border;-1;1;0;-0.2;yes
6;kCenter0;Center0;Horizontal Position;0;1;0;0.5;yes
7;kCenter1;Center1;Vertical Postion;0;1;0;0.5;yes
8;kCenter2;Center2;Depth Shift;-1;1;0;0;yes
9;kRotation;Rotation;Local Rotation;-360;360;1;0;yes
10;kCenterRotation;CenterRotation;Center Rotation;-360;360;1;0;yes
11;kRotationPeriod;LocalRotationPeriod;Local Rotation Period;0;32;1;0;yes
12;kCenterPeriod0;CenterPeriod0;Horizontal Arch Period;0;32;1;0;yes
13;kCenterPeriod1;CenterPeriod1;Vertical Arch Period;0;32;1;0;yes
14;kSwirl;Swirl;Swirl Amount;-10;10;0;0;yes
15;kJitter;Jitter;Jitter1 Amount;-1;1;0;0;yes
16;kJitterSpeed;JitterSpeed;Jitter1 Frequency;0;1;0;0;yes
17;kCornerType;CornerType;Corner Type;0;4;1;0;yes
18;kProfileType;ProfileType;Profile Type;0;4;1;0;no
19;kProfilePar0;Profile Linearity;Profile Linearity;-1;1;0;0;yes
20;kProfilePar1;Profile Symmetry;Profile Symmetry;-1;1;0;0;yes
21;kProfilePar2;Profile Groove;Profile Groove;-1;1;0;0;yes
22;kProfilePar3;Profile Steps;Profile Steps;1;32;1;0;yes
23;kVertCurve;VertCurve;Vertical Curvature Amount;-1;1;0;0;yes
24;kVertShape;VertShape;Vertical Curvature Shape;0;3;1;0;no
25;kVertBorderCurve;VertBorderCurve;Vertical Border Curvature Amount;-1;1;0;0;yes
26;kVertBorderShape;VertBorderShape;Vertical Border Curvature Shape;0;1;0;0;no
27;kHorCurve;HorCurve;Horizontal Curvature Amount;-1;1;0;0;yes
28;kHorShape;HorShape;Horizontal Curvature Shape;0;2;1;0;no
29;kHorBorderCurve;HorBorderCurve;Horizontal Border Curvature Amount;-1;1;0;0;yes
30;kHorBorderShape;HorBorderShape;Horizontal Border Curvature Shape;0;2;1;0;no
31;kVertArch;VertArch;Vertical Arch Amount;-1;1;0;0;yes
32;kVertArchShape;VertArchShape;Vertical Arch Amount Shape;0;2;1;0;no
33;kHorArch;HorArch;Horizontal Arch Amount;-1;1;0;0;yes
34;kHorArchShape;HorArchShape;Horizontal Arch Amount Shape;0;2;1;0;no
35;kCentralArch;CentralArch;Central Arch Amount;-1;1;0;0;yes
36;kCentralArchShape;CentralArchShape;Central Arch Shape;0;2;1;0;no
37;kVertSheer;VertSheer;Vertical Sheer Amount;-1;1;0;0;yes
38;kVertSheerShape;VertSheerShape;Vertical Sheer Shape;0;2;1;0;no
39;kHorSheer;HorSheer;Horizontal Sheer Amount;-1;1;0;0;yes
40;kHorSheerShape;HorSheerShape;Horizontal Sheer Shape;0;2;1;0;no
41;kVertPerspect;VertPerspect;Vertical Perspective Amount;-1;1;0;0;yes
42;kVertPerspectShape;VertPerspectShape;Vert Perspective Shape;0;2;1;0;no
43;kHorPerspect;HorPerspect;Horizontal Perspective Amount;-1;1;0;0;yes
44;kHorPerspectShape;HorPerspectShape;Horizontal Perspective Shape;0;2;1;0;no
45;kNoiseAmount;NoiseAmount;Noise Amount;-1;1;0;0;yes
46;kNoiseZoom;NoiseZoom;Noise Zoom Level;-1;1;0;0;yes
47;kNoiseRatio;NoiseRatio;Noise Frequency Ratio;-1;1;0;0;yes
48;kNoiseFreqMod;NoiseFreqMod;Noise Turbulence;-1;1;0;0;yes
49;kNoisePosClip;NoisePosClip;Noise Upper Clip;-1;1;0;0;yes
50;kNoiseNegClip;NoiseNegClip;Noise Lower Clip;-1;1;0;0;yes
51;kNoiseVertCurve;NoiseVertCurve;Noise Vert Curve;-1;1;0;0;yes
52;kNoiseHorCurve;NoiseHorCurve;Noise Hor Curve;-1;1;0;0;yes
53;kCenterRotationPeriod;CenterRotationPeriod;Center Rotation Period;0;32;1;0;yes
54;kElevationDirection;ElevationDirection;Elevation Direction;0;360;1;0;yes
55;kElevationAmount;ElevationAmount;Elevation Amount;-90;90;1;0;yes
56;kJitter2;Jitter2;Jitter2 Amount;-1;1;0;0;yes
57;kJitter2Speed;Jitter2Speed;Jitter2 Frequency;0;1;0;0;yes
58;kAlphaBlur;AlphaBlur;AlphaBlur;0;1;0;0;yes
59;kAlphaThreshold;AlphaThreshold;AlphaThreshold;0;1;0;0;yes
60;kLightAzimuth;LightAzimuth;LightAzimuth;0;1;0;0;yes
61;kLightElevation;LightElevation;LightElevation;0;1;0;0;yes
62;kLightWidth;LightWidth;LightWidth;0;1;0;0;yes
63;kLightAmbient;LightAmbient;LightAmbient;0;1;0;0;yes
64;kLightBrilliance;LightBrilliance;LightBrilliance;0;1;0;0;yes
65;kLightColor_r;LightColor_r;LightColor_r;0;1;0;0;yes
66;kLightColor_g;LightColor_g;LightColor_g;0;1;0;0;yes
67;kLightColor_b;LightColor_b;LightColor_b;0;1;0;0;yes
68;kShadowSoftness;ShadowSoftness;ShadowSoftness;0;1;0;0;yes
69;kShadowLength;ShadowLength;ShadowLength;0;1;0;0;yes
70;kShadowDisplacement;ShadowDisplacement;ShadowDisplacement;0;1;0;0;yes
71;kShadowOpacity;ShadowOpacity;ShadowOpacity;0;1;0;0;yes
72;kShadowStep;ShadowStep;ShadowStep;0;1;0;0;yes
73;kShadowColor_r;ShadowColor_r;ShadowColor_r;0;1;0;0;yes
74;kShadowColor_g;ShadowColor_g;ShadowColor_g;0;1;0;0;yes
75;kShadowColor_b;ShadowColor_b;ShadowColor_b;0;1;0;0;yes
)";

TEST(Parameters, EveryRowIsTheSettledOne) {
    std::istringstream lines(settled);
    std::string line;
    uint32_t index = 0;
    for (; std::getline(lines, line); ++index) {
        ASSERT_LT(index, kSheenParameterCount);
        const LxSheenParameter &row = sheenParameters[index];
        std::ostringstream ours;
        ours << index << ';' << row.key << ';' << row.name << ';' << row.label << ';' << row.minimum << ';'
             << row.maximum << ';' << row.step << ';' << row.defaultValue << ';'
             << (row.interpolated == 1 ? "yes" : "no");
        EXPECT_EQ(ours.str(), line);
    }
    EXPECT_EQ(index, 76u);
}

TEST(Parameters, IndicesBearTheKeysOfTheirRows) {
#define EXPECT_KEY(index) EXPECT_STREQ(sheenParameters[index].key, #index)
    EXPECT_KEY(kSymmetry);
    EXPECT_KEY(kHeight);
    EXPECT_KEY(kInnerSize0);
    EXPECT_KEY(kInnerSize1);
    EXPECT_KEY(kBorderSize0);
    EXPECT_KEY(kBorderSize1);
    EXPECT_KEY(kCenter0);
    EXPECT_KEY(kCenter1);
    EXPECT_KEY(kCenter2);
    EXPECT_KEY(kRotation);
    EXPECT_KEY(kCenterRotation);
    EXPECT_KEY(kRotationPeriod);
    EXPECT_KEY(kCenterPeriod0);
    EXPECT_KEY(kCenterPeriod1);
    EXPECT_KEY(kSwirl);
    EXPECT_KEY(kJitter);
    EXPECT_KEY(kJitterSpeed);
    EXPECT_KEY(kCornerType);
    EXPECT_KEY(kProfileType);
    EXPECT_KEY(kProfilePar0);
    EXPECT_KEY(kProfilePar1);
    EXPECT_KEY(kProfilePar2);
    EXPECT_KEY(kProfilePar3);
    EXPECT_KEY(kVertCurve);
    EXPECT_KEY(kVertShape);
    EXPECT_KEY(kVertBorderCurve);
    EXPECT_KEY(kVertBorderShape);
    EXPECT_KEY(kHorCurve);
    EXPECT_KEY(kHorShape);
    EXPECT_KEY(kHorBorderCurve);
    EXPECT_KEY(kHorBorderShape);
    EXPECT_KEY(kVertArch);
    EXPECT_KEY(kVertArchShape);
    EXPECT_KEY(kHorArch);
    EXPECT_KEY(kHorArchShape);
    EXPECT_KEY(kCentralArch);
    EXPECT_KEY(kCentralArchShape);
    EXPECT_KEY(kVertSheer);
    EXPECT_KEY(kVertSheerShape);
    EXPECT_KEY(kHorSheer);
    EXPECT_KEY(kHorSheerShape);
    EXPECT_KEY(kVertPerspect);
    EXPECT_KEY(kVertPerspectShape);
    EXPECT_KEY(kHorPerspect);
    EXPECT_KEY(kHorPerspectShape);
    EXPECT_KEY(kNoiseAmount);
    EXPECT_KEY(kNoiseZoom);
    EXPECT_KEY(kNoiseRatio);
    EXPECT_KEY(kNoiseFreqMod);
    EXPECT_KEY(kNoisePosClip);
    EXPECT_KEY(kNoiseNegClip);
    EXPECT_KEY(kNoiseVertCurve);
    EXPECT_KEY(kNoiseHorCurve);
    EXPECT_KEY(kCenterRotationPeriod);
    EXPECT_KEY(kElevationDirection);
    EXPECT_KEY(kElevationAmount);
    EXPECT_KEY(kJitter2);
    EXPECT_KEY(kJitter2Speed);
    EXPECT_KEY(kAlphaBlur);
    EXPECT_KEY(kAlphaThreshold);
    EXPECT_KEY(kLightAzimuth);
    EXPECT_KEY(kLightElevation);
    EXPECT_KEY(kLightWidth);
    EXPECT_KEY(kLightAmbient);
    EXPECT_KEY(kLightBrilliance);
    EXPECT_KEY(kLightColor_r);
    EXPECT_KEY(kLightColor_g);
    EXPECT_KEY(kLightColor_b);
    EXPECT_KEY(kShadowSoftness);
    EXPECT_KEY(kShadowLength);
    EXPECT_KEY(kShadowDisplacement);
    EXPECT_KEY(kShadowOpacity);
    EXPECT_KEY(kShadowStep);
    EXPECT_KEY(kShadowColor_r);
    EXPECT_KEY(kShadowColor_g);
    EXPECT_KEY(kShadowColor_b);
#undef EXPECT_KEY
}
