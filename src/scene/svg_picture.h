// A scene as SVG text, for a browser or a drawing program. Depth and kind are shown by line and pattern too,
// not by colour alone; the colours follow the reader's light or dark scheme.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scene/scene.h"

namespace kv {

struct PictureTitle {
    std::string Name;               // UTF-8: of the drawing or program
    std::vector<std::string> Lines; // UTF-8, below it
};

// The whole file.
std::string SvgPicture(const Scene& scene, const PictureTitle& title);
// The element <svg> alone, for a page that has the style of PictureStyle.
// `withOrder`: the numbers of the operations too, hidden while their group has the class "off".
std::string SvgElement(const Scene& scene, const PictureTitle& title, bool withOrder = false);
std::string PictureStyle();
// The part of that element that shows one view, as its viewBox.
std::string SvgViewOf(const Scene& scene, const PictureTitle& title, const SceneView& view);
// Text between tags or in an attribute. What XML does not allow becomes "?".
std::string XmlText(std::string_view utf8);

} // namespace kv
