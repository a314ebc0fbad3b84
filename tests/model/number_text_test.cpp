// Numbers to text and back, conversions between the number types.
#include "model/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "model/numbers.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

TEST(NumberText, FormatsRoundAndChangeFormWhereTheyShould) {
  EXPECT_EQ(GeneralText(0.05F), "0.05");
  EXPECT_EQ(GeneralText(2.1e7F), "2.1E+07");  // eight digits pass a Single's seven
  EXPECT_EQ(GeneralText(16777216.0F), "1.677722E+07");
  EXPECT_EQ(GeneralText(2.1e7), "21000000");  // but not a Double's fifteen
  EXPECT_EQ(GeneralText(1.0 / 3.0), "0.333333333333333");
  EXPECT_EQ(GeneralText(1e-5), "1E-05");
  EXPECT_EQ(GeneralText(1e300), "1E+300");
  EXPECT_EQ(GeneralText(-0.0), "0");           // no minus sign before a zero
  EXPECT_EQ(ExponentText(12450), "1.25E+04");  // an exact tie that half-to-even would lower
  EXPECT_EQ(ExponentText(-12450), "-1.25E+04");
  EXPECT_EQ(ExponentText(9.995), "9.99E+00");   // the double lies just below the tie
  EXPECT_EQ(ExponentText(9.9951), "1.00E+01");  // the mantissa carries into the exponent
  EXPECT_EQ(ExponentText(5e-324), "4.94E-324");
  EXPECT_EQ(ExponentText(-0.0), "0.00E+00");
  EXPECT_EQ(WholeText(2.5), "3");
  EXPECT_EQ(WholeText(-2.5), "-3");
  EXPECT_EQ(WholeText(-0.4), "0");
}

TEST(NumberText, LeadingNumberOfTypedText) {
  const struct {
    const char* text;
    double value;
  } cases[] = {{"", 0},       {"abc", 0},    {"  12.5 mm", 12.5},
               {"-3", -3},    {"+4", 4},     {".5", 0.5},
               {"1e3", 1000}, {"1e+", 1},    {"1E-2y", 0.01},
               {"-.", 0},     {"--1", 0},    {"1,5", 1},
               {"inf", 0},    {"1e-400", 0}, {"0.0000000e999999999999", 0}};
  for (const auto& c : cases) EXPECT_EQ(LeadingNumber(c.text), c.value) << c.text;
  EXPECT_EQ(LeadingNumber("1e400"), std::nullopt);
  EXPECT_EQ(LeadingNumber("1e99999999999999999999"), std::nullopt);
}

TEST(Numbers, ConversionsRoundHalvesToEvenAndRefuseOverflow) {
  EXPECT_EQ(ToInteger(2.5, "x"), 2);
  EXPECT_EQ(ToInteger(3.5, "x"), 4);
  EXPECT_EQ(ToInteger(-32768.5, "x"), -32768);
  EXPECT_THROW(ToInteger(32767.5, "x"), RunTimeError);
  EXPECT_THROW(ToInteger(std::numeric_limits<double>::quiet_NaN(), "x"), RunTimeError);
  EXPECT_EQ(ToSingle(0x1.fffffefp127, "x"), std::numeric_limits<float>::max());
  EXPECT_THROW(ToSingle(0x1.ffffffp127, "x"), RunTimeError);
}

/// What is written is read back to a value that is written the same again.
template <class Number>
void ExpectStable(Number value) {
  Number back = 0;
  ASSERT_EQ(ParseField(GeneralText(value), back), FieldFault::kNone);
  ASSERT_EQ(GeneralText(back), GeneralText(value));
}

TEST(NumberText, WritingReadingAndWritingIsStableAtAnyMagnitude) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 20000; ++i) {
    const auto bits = static_cast<std::uint32_t>(random());
    if (!std::isfinite(std::bit_cast<Single>(bits))) continue;
    ExpectStable(std::bit_cast<Single>(bits));
    ExpectStable(std::ldexp(static_cast<double>(random()), static_cast<int>(bits % 1800) - 950));
  }
}

}  // namespace
}  // namespace quillane
