#include "shell/form_place.h"

#include <gtest/gtest.h>

namespace sondrel {
namespace {

struct PlaceCase
{
    const char *name;
    QSize screen;
    QSize dialog;
    QPoint place;
};

class FormPlace : public testing::TestWithParam<PlaceCase>
{
};

TEST_P(FormPlace, standsALittleAboveTheMiddle)
{
    const auto place = centredPlace(GetParam().screen, GetParam().dialog);
    EXPECT_EQ(place.x(), GetParam().place.x());
    EXPECT_EQ(place.y(), GetParam().place.y());
}

INSTANTIATE_TEST_SUITE_P(Sizes, FormPlace,
                         testing::Values(PlaceCase{"even", {1000, 1000}, {400, 300}, {300, 300}},
                                         PlaceCase{"oddRest", {1001, 1000}, {400, 299}, {300, 300}},
                                         PlaceCase{"halfRoundsToEven", {100, 105}, {100, 90}, {0, 2}},
                                         PlaceCase{"halfRoundsUpToEven", {100, 115}, {100, 90}, {0, 7}},
                                         PlaceCase{"largerThanTheScreen", {100, 100}, {105, 101}, {-2, -5}}),
                         [](const auto &info) { return info.param.name; });

} // namespace
} // namespace sondrel
