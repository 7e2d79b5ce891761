#include "pictures/SvgCanvas.h"

#include "base/Characters.h"
#include "base/Text.h"

#include <cmath>

namespace {

// Tenths of a pixel, so that what is put together from steps ends where it has to.
std::int64_t tenthsOf(double pixels)
{
    return std::llround(pixels * 10);
}

// With a blank before it where it would run into what stands there.
void appendTenths(std::string& out, std::int64_t tenths)
{
    const char before = out.empty() ? ' ' : out.back();
    if (tenths >= 0 && ((before >= '0' && before <= '9') || before == '.')) {
        out += ' ';
    }
    char digits[numberRoom];
    out += tenths < 0 ? "-" : "";
    const auto size = static_cast<std::uint64_t>(tenths < 0 ? -tenths : tenths);
    out.append(digits, putUnsigned(digits, size / 10));
    if (size % 10 != 0) {
        out += '.';
        out += static_cast<char>('0' + size % 10);
    }
}

std::string numberText(double pixels)
{
    std::string text;
    appendTenths(text, tenthsOf(pixels));
    return text;
}

std::string attribute(const char* name, double pixels)
{
    return std::string(" ") + name + "=\"" + numberText(pixels) + "\"";
}

std::string place(const Box& box)
{
    return attribute("x", box.left) + attribute("y", box.top) + attribute("width", box.width) +
           attribute("height", box.height);
}

std::string classOf(const Ink& ink)
{
    constexpr const char* names[] = {"text", "faint", "grid", "frame", "good", "warn", "bad", "c"};
    const std::string name = names[static_cast<std::size_t>(ink.role)];
    return ink.role == Role::series ? name + std::to_string(ink.number % Ink::seriesColours) : name;
}

const char* dashesOf(Dash dash)
{
    constexpr const char* all[] = {"", " stroke-dasharray=\"6 3\"", " stroke-dasharray=\"2 3\""};
    return all[static_cast<std::size_t>(dash)];
}

// Goes through points by steps from one to the next.
class Walk {
public:
    explicit Walk(std::string& target) : out(target) {}

    void step(const Point& to)
    {
        const std::int64_t toX = tenthsOf(to.x);
        const std::int64_t toY = tenthsOf(to.y);
        appendTenths(out, toX - x);
        appendTenths(out, toY - y);
        x = toX;
        y = toY;
    }
    // Straight down or up.
    void stepTo(double bottom)
    {
        const std::int64_t toY = tenthsOf(bottom);
        appendTenths(out, toY - y);
        y = toY;
    }

private:
    std::string& out;
    std::int64_t x = 0;
    std::int64_t y = 0;
};

}    // namespace

std::string escapedMarkup(std::string_view text)
{
    std::string out;
    for (const char c : validUtf8(text)) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&#39;";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
                const int picture = c == 0x7f ? 0x2421 : 0x2400 + c;
                out += "&#" + std::to_string(picture) + ";";
            } else {
                out += c;
            }
        }
    }
    return out;
}

SvgCanvas::SvgCanvas(const Picture& picture, bool standsAlone)
{
    svg = "<svg class=\"picture\" role=\"img\"" + attribute("width", picture.width) +
          attribute("height", picture.height) + " viewBox=\"0 0 " + numberText(picture.width) +
          " " + numberText(picture.height) + "\"";
    svg += standsAlone ? " xmlns=\"http://www.w3.org/2000/svg\">" : ">";
    svg += "<title>" + escapedMarkup(picture.title) + "</title><desc>" +
           escapedMarkup(picture.description) + "</desc>";
    if (standsAlone) {
        svg += "<style>" + std::string(pictureStyle()) +
               "</style><rect class=\"paper\" width=\"100%\" height=\"100%\"/>";
    }
}

std::string SvgCanvas::take()
{
    return std::move(svg) + "</svg>\n";
}

void SvgCanvas::beginPath(const Pen& pen, std::string_view more)
{
    svg += "<path class=\"s " + classOf(pen.ink) + "\"" + dashesOf(pen.dash);
    svg += pen.width == 1 ? "" : attribute("stroke-width", pen.width);
    svg += std::string(more) + " d=\"M";
}

void SvgCanvas::line(const Point& from, const Point& to, const Pen& pen)
{
    polyline(std::initializer_list<Point>{from, to}, pen);
}

void SvgCanvas::polyline(std::span<const Point> points, const Pen& pen)
{
    if (points.empty()) {
        return;
    }
    beginPath(pen);
    Walk walk(svg);
    walk.step(points.front());
    svg += 'l';
    for (const Point& point : points.subspan(points.size() > 1 ? 1 : 0)) {
        walk.step(point);
    }
    svg += "\"/>";
}

void SvgCanvas::dots(std::span<const Point> points, const Pen& pen)
{
    if (points.empty()) {
        return;
    }
    beginPath(pen, " stroke-linecap=\"round\"");
    Walk walk(svg);
    for (const Point& point : points) {
        svg += &point == points.data() ? "" : "m";
        walk.step(point);
        svg += "h0";
    }
    svg += "\"/>";
}

void SvgCanvas::bars(std::span<const Bar> all, const Pen& pen)
{
    if (all.empty()) {
        return;
    }
    beginPath(pen);
    Walk walk(svg);
    for (const Bar& bar : all) {
        svg += &bar == all.data() ? "" : "m";
        walk.step({bar.x, bar.top});
        svg += "v";
        walk.stepTo(bar.bottom);
    }
    svg += "\"/>";
}

void SvgCanvas::rectangle(const Box& box, const Ink& fill)
{
    svg += "<rect class=\"f " + classOf(fill) + "\"" + place(box) + "/>";
}

void SvgCanvas::text(const Point& at, std::string_view characters, const Lettering& how)
{
    constexpr const char* anchors[] = {"", " text-anchor=\"middle\"", " text-anchor=\"end\""};
    svg += "<text class=\"f " + classOf(how.ink) + "\"" + attribute("x", at.x) +
           attribute("y", at.y) + attribute("font-size", how.size);
    svg += anchors[static_cast<std::size_t>(how.anchor)];
    svg += how.isBold ? " font-weight=\"600\">" : ">";
    svg += escapedMarkup(characters) + "</text>";
}

void SvgCanvas::beginGroup(std::string_view title)
{
    svg += "<g><title>" + escapedMarkup(title) + "</title>";
}

// What lies in an inner picture is clipped by its edges.
void SvgCanvas::beginClip(const Box& box)
{
    svg += "<svg" + place(box) + " viewBox=\"" + numberText(box.left) + " " + numberText(box.top) +
           " " + numberText(box.width) + " " + numberText(box.height) + "\">";
}

double SvgCanvas::widthOf(std::string_view characters, double size) const
{
    constexpr double usualWidth = 0.61;    // of a character, as a share of the size
    const auto isFirstByte = [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    };
    double count = 0;
    for (const char c : characters) {
        count += isFirstByte(c) ? 1 : 0;
    }
    return usualWidth * size * count;
}
