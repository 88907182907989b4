#include "conforming_samples.h"

namespace ozm::test {
namespace {

std::string Drawing(const std::string& body) {
    return "<?xml version='1.0'?><!-- (c) nobody --><!DOCTYPE svg [<!ENTITY red '#f00'>]>"
           "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
           "viewBox='0 0 24 24' fill='#080' style='background:#eee'><title>A &amp; B</title>" +
           body + "</svg>";
}

} // namespace

const std::vector<ConformingSample>& ConformingSamples() {
    static const std::vector<ConformingSample> samples = {
        {Drawing(
            "<style>@media screen{g>.a:not(:first-child),#b{fill:var(--c,blue)}}/* c "
            "*/path{stroke:red}</style>"
            "<g style='--c:lime'><rect width='2em' height='5%' rx='1'/><path class='a' d='M1 1a4 4 0 0 1 "
            "8 0q1 1 2 2z'/>"
            "<path fill='&red;' style='fill-opacity:50%;d:path(\"M1 1h3v3z\")' "
            "transform='rotate(9),scale(2)'/></g>")},
        {Drawing("<symbol id='s' viewBox='0 0 4 4'><circle r='3' stroke='currentColor'/></symbol>"
                 "<use xlink:href='#s' width='8' height='8'/><switch><text systemLanguage='de'>t</text><g>"
                 "<svg x='9' width='9' height='9'><ellipse rx='4' cx='4' cy='4'/></svg></g></switch>")},
        {Drawing(
            "<linearGradient id='a'><stop stop-color='red'/><stop offset='1' "
            "stop-color='#00f8'/></linearGradient>"
            "<radialGradient id='b' href='#a' r='.2' spreadMethod='reflect' gradientTransform='skewX(9)'/>"
            "<path d='M2 2h9v9H2zM4 4h3v3H4z' fill-rule='evenodd' fill='url(#a)' stroke='url(#b)'/>"
            "<path d='M2 14c4 0 4 6 9 6' fill='none' stroke='#000' stroke-dasharray='2 1' "
            "stroke-linecap='round'/>")},
        {Drawing("<clipPath id='c' clip-path='url(#d)'><circle r='9' clip-rule='evenodd'/><rect x='4' "
                 "width='9' height='9'/>"
                 "</clipPath><clipPath id='d'><path d='M0 0h20v20z'/></clipPath>"
                 "<mask id='m'><rect width='24' height='24' fill='#fff'/><circle cx='9' cy='9' r='4' "
                 "fill='gray'/></mask>"
                 "<g clip-path='url(#c)' mask='url(#m)' opacity='.5'><rect width='9' height='9'/>"
                 "<rect x='4' width='9' height='9' fill='red' fill-opacity='.5'/></g>"),
         true},
        {Drawing(
            "<marker id='m' orient='auto' overflow='visible'><path d='M0 0l2 1-2 1z' "
            "fill='context-stroke'/></marker>"
            "<pattern id='p' width='3' height='3' patternUnits='userSpaceOnUse'><circle r='1'/></pattern>"
            "<filter id='f'><feColorMatrix type='hueRotate' values='90'/></filter>"
            "<path d='M2 2h9a3 3 0 0 1 3 3v9' fill='url(#p)' stroke='red' marker-mid='url(#m)' "
            "filter='url(#f)'/>")},
    };
    return samples;
}

} // namespace ozm::test
