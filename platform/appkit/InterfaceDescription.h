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
///         <view class="NSPopUpButton" outlet="rhythm" pullsDown="yes" frame="100 39 83 16"/>
///       </view>
///     </view>
///     <menu outlet="rhythmMenu">
///       <item title="rhythm"/>
///       <item title="1/4"/>
///     </menu>
///   </interface>
///
/// Frames are in points, no number beyond 4096. A top-level view's outlet is the owner's; an outlet further
/// in is that of the top-level view round it, and that of a menu is that of the top-level view before it (the
/// owner's, if there is none). All other attributes are those of the class's record. A pop-up button (or
/// subclass) takes items in place of views. Only its outlet (a std::shared_ptr) and the buttons that show it
/// keep a menu. Order: all objects, by their constructor with the frame, with their attributes, items and
/// tree, then outlets, then "awakeFromNib" once to each view that answers it, parents before children.
///
/// False, with one line "FILE:LINE: what is wrong, what was expected" in the log, when anything is wrong: a
/// file that is missing or no XML, an unknown element, class, outlet, attribute or value, a required outlet
/// of a top-level view that nobody connects. Nothing half-made stays: no outlet of the owner is touched.
/// Exceptions of constructors and awakeFromNib pass through. Main thread.
bool loadNibNamed_owner(std::string_view name, NSObject& owner);
