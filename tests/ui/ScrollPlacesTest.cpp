#include <QQuickItem>
#include <QQuickWindow>
#include <gtest/gtest.h>

#include "ui/views/ScrollPlaces.h"

namespace korvantis {
namespace {

TEST(ScrollPlaces, APlaceIsKnownToWhatComesLaterInTheSameWindowOnly) {
  QQuickWindow window;
  QQuickWindow other;
  QQuickItem later;
  QQuickItem elsewhere;
  {
    QQuickItem view;
    view.setParentItem(window.contentItem());
    ScrollPlaces::keep(&view, "list", 120.5);
    ScrollPlaces::keep(&view, "page", 7);
  }
  later.setParentItem(window.contentItem());
  elsewhere.setParentItem(other.contentItem());
  EXPECT_DOUBLE_EQ(ScrollPlaces::kept(&later, "list"), 120.5);
  EXPECT_DOUBLE_EQ(ScrollPlaces::kept(&later, "page"), 7);
  EXPECT_DOUBLE_EQ(ScrollPlaces::kept(&later, "other"), 0);
  EXPECT_DOUBLE_EQ(ScrollPlaces::kept(&elsewhere, "list"), 0);
}

TEST(ScrollPlaces, AnItemInNoWindowKeepsNothing) {
  QQuickItem view;
  ScrollPlaces::keep(&view, "list", 5);
  ScrollPlaces::keep(nullptr, "list", 5);
  EXPECT_DOUBLE_EQ(ScrollPlaces::kept(&view, "list"), 0);
  EXPECT_DOUBLE_EQ(ScrollPlaces::kept(nullptr, "list"), 0);
}

}  // namespace
}  // namespace korvantis
