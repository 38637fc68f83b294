// The names by which state that was saved through COM is recognised.
#pragma once

#include "tarvo/text.hpp"

namespace TARVO {

// State as COM left it has a node that says what it was saved as.
inline constinit tarvo::ConstantString markerNodeName(u"TARVO");
inline constinit tarvo::ConstantString comTypeName(u"comType");

// State for a component says so in a value of its own.
inline constinit tarvo::ConstantString transitionFormatName(u"TransitionFormat");

// Either of them names one of these.
constexpr std::u16string_view kStreamForm = u"Stream";
constexpr std::u16string_view kBagForm = u"PropertyBag";

// The bytes of a stream as COM left it, and the node of a bag.
inline constinit tarvo::ConstantString dataName(u"data");

// The bytes of a stream for a component.
inline constinit tarvo::ConstantString transitionDataName(u"data");

// A value in the node of a bag: above 0 if the library can decode it.
inline constinit tarvo::ConstantString bagVersionName(u"MORVENPersistenceVersion");

} // namespace TARVO
