// Pictures as SVG.
#pragma once

#include "pictures/Canvas.h"

#include <cstdint>
#include <string>
#include <string_view>

// The colours of all roles, for pictures on paper and on light and dark screens: a stylesheet for
// the page that the pictures stand in, or for a picture alone. The attribute data-theme of the root
// element, "light" or "dark", decides over what the screen prefers.
std::string_view pictureStyle();

class SvgCanvas : public Canvas {
public:
    struct Picture {
        double width = 0;
        double height = 0;
        std::string title;          // what it is
        std::string description;    // what it shows, for those who do not see it
    };

    // `standsAlone`: as a file of its own, with its colours, and not in a page that has them.
    explicit SvgCanvas(const Picture& picture, bool standsAlone = false);

    void line(const Point& from, const Point& to, const Pen& pen) override;
    void polyline(std::span<const Point> points, const Pen& pen) override;
    void dots(std::span<const Point> points, const Pen& pen) override;
    void bars(std::span<const Bar> all, const Pen& pen) override;
    void rectangle(const Box& box, const Ink& fill) override;
    void text(const Point& at, std::string_view characters, const Lettering& how) override;
    void beginGroup(std::string_view title) override;
    void endGroup() override { svg += "</g>"; }
    void beginClip(const Box& box) override;
    void endClip() override { svg += "</svg>"; }
    double widthOf(std::string_view characters, double size) const override;

    // The picture, which is complete.
    std::string take();

private:
    void beginPath(const Pen& pen, std::string_view more = {});

    std::string svg;
};

// Text as it stands in HTML and SVG, between tags and in attributes: what is no UTF-8 becomes
// U+FFFD, and control characters become their pictures.
std::string escapedMarkup(std::string_view text);
