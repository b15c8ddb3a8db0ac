#pragma once

#include <string>
#include <string_view>

class NSObject;

/// Makes what the interface description NAME.xml, in the resources of the bundle of the owner's class,
/// tells:
///
///   <interface>
///     <view class="sample_UIView" outlet="freshView" frame="0 0 420 158">
///       <view class="GroupView" title="Delay" frame="108 44 204 98">
///         <view class="KnobView" outlet="delay" frame="56 6 92 76"/>
///       </view>
///     </view>
///   </interface>
///
/// A top-level view's outlet is the owner's; an outlet further in is that of the top-level view round it.
/// All other attributes are those of the class's record. Order: all objects with their attributes and
/// tree, then outlets, then "awakeFromNib" once to each object that answers it, parents before children.
///
/// False, with one line "FILE:LINE: what is wrong, what was expected" in the log, when anything is wrong: a
/// file that is missing or no XML, an unknown class, outlet, attribute or value, a required outlet of a
/// top-level view that nobody connects. Nothing half-made stays: no outlet of the owner is touched.
/// Exceptions of constructors and awakeFromNib pass through. Main thread.
bool loadNibNamed_owner(std::string_view name, NSObject& owner);
