// What pictures are drawn on: a few primitives, with colours by what they stand for, so that one
// drawing fits a page, a window and paper, light and dark.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

// In pixels, from the upper left.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

struct Box {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    double right() const { return left + width; }
    double bottom() const { return top + height; }
};

// What a colour stands for.
enum class Role : std::uint8_t {
    text,
    faint,    // text that stands back
    grid,
    frame,
    good,
    warning,
    bad,
    series,    // one of several things that are told apart by colour
};

struct Ink {
    // So many colours can be told apart, also by those who see few; what comes behind them begins
    // again with the first one.
    static constexpr unsigned seriesColours = 8;

    Role role = Role::text;
    unsigned number = 0;    // of the series, from 0
};

enum class Dash : std::uint8_t { solid, dashed, dotted };

struct Pen {
    Ink ink{};
    double width = 1;
    Dash dash = Dash::solid;
};

enum class Anchor : std::uint8_t { begin, middle, end };

struct Lettering {
    Ink ink{};
    double size = 11;
    Anchor anchor = Anchor::begin;
    bool isBold = false;
};

// A vertical stroke.
struct Bar {
    double x = 0;
    double top = 0;
    double bottom = 0;
};

class Canvas {
public:
    virtual ~Canvas() = default;

    virtual void line(const Point& from, const Point& to, const Pen& pen) = 0;
    virtual void polyline(std::span<const Point> points, const Pen& pen) = 0;
    virtual void dots(std::span<const Point> points, const Pen& pen) = 0;
    virtual void bars(std::span<const Bar> all, const Pen& pen) = 0;
    virtual void rectangle(const Box& box, const Ink& fill) = 0;
    // The point is on the base line of the text, which is UTF-8.
    virtual void text(const Point& at, std::string_view characters, const Lettering& how) = 0;

    // What is drawn until the end belongs together, and this is what it is: shown where a pointer
    // rests on it.
    virtual void beginGroup(std::string_view title) = 0;
    virtual void endGroup() = 0;

    // Nothing is drawn outside the box until the end. Boxes do not lie in each other.
    virtual void beginClip(const Box& box) = 0;
    virtual void endClip() = 0;

    // How much room a text takes, at least about.
    virtual double widthOf(std::string_view characters, double size) const = 0;
};

// The colour of the number-th of several things, and dashes where colours begin again.
inline Pen seriesPen(unsigned number, double width)
{
    constexpr Dash dashes[] = {Dash::solid, Dash::dashed, Dash::dotted};
    return {.ink = {Role::series, number % Ink::seriesColours},
            .width = width,
            .dash = dashes[number / Ink::seriesColours % 3]};
}
