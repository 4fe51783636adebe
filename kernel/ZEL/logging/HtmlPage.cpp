#include <ZEL/logging/HtmlPage.h>

#include <hasp_util/XmlConstants.h>

namespace ZEL::html {

namespace {

constexpr char beforeNamespace[] = R"html(<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE html
PUBLIC "-//W3C//DTD XHTML 1.0 Transitional//EN" "http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd">
<html xmlns=")html";

// The tab after the third closing brace belongs to the pages.
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

std::string prologue(std::string const & title) {
    std::string text(beforeNamespace);
    text.append(HASP::XmlConstants::XHTML_NS_URI).append("\">\n<head>\n<title>").append(title).append("</title>\n");
    return text;
}

std::string_view script() noexcept { return scriptText; }

std::string_view bodyStart() noexcept { return "</head>\n<body  onload=\"initialize()\">\n"; }

} // namespace ZEL::html
