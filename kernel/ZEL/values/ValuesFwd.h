#pragma once

/// Names the value classes for headers that only pass them on, or convert by templates.
namespace ZEL {

class Boolean;
class Double;
class Integer;
class Real;
class Single;
class String;
class UnlimitedNatural;

} // namespace ZEL
