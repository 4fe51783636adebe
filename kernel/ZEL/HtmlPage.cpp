#include <ZEL/HtmlPage.h>

namespace ZEL::html {

namespace {

constexpr char beforeTitle[] = R"html(<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE html
PUBLIC "-//W3C//DTD XHTML 1.0 Transitional//EN" "http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd">
<html xmlns="http://www.w3.org/1999/xhtml">
<head>
)html";

// The tab behind the third closing brace belongs to the pages.
constexpr char scriptText[] = R"html(<script type="text/javascript" language="JavaScript">
<!--
function initialize() {
}
function toggleCssDisplayNum(cssRuleNum) {
 var rule = getCssRuleByNum(cssRuleNum);
 toggleDisplay(rule);
})html"
                              "\t\n"
                              R"html(function getCssRuleByNum(num) {
 var rules = getCssRules();
 return rules[num];
}
function getCssRules() {
 if (!document.styleSheets) return;
 var rules=new Array();
 if (document.styleSheets[0].cssRules) // netscape
  rules=document.styleSheets[0].cssRules;
 else if (document.styleSheets[0].rules) // ie
  rules=document.styleSheets[0].rules;
 return rules;
}
function toggleDisplay(el) {
 if ( el.style.display != 'none' )
  el.style.display = 'none';
 else
  el.style.display = '';
}
-->
</script>
)html";

} // namespace

std::string prologue(std::string const & title) { return beforeTitle + ("<title>" + title + "</title>\n"); }

std::string_view script() noexcept { return scriptText; }

std::string_view bodyStart() noexcept { return "</head>\n<body  onload=\"initialize()\">\n"; }

} // namespace ZEL::html
