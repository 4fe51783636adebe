#include <ZEL/HTMLLogFormatter.h>
#include <ZEL/LogRecord.h>
#include <ZEL/Now.h>

namespace ZEL {

namespace {

constexpr char head[] = R"html(<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE html
PUBLIC "-//W3C//DTD XHTML 1.0 Transitional//EN" "http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd">
<html xmlns="http://www.w3.org/1999/xhtml">
<head>
<title>FEN Logger Report </title>
)html";

constexpr char styleSheet[] = R"html(<style type="text/css">
body {width:800px; font-size:10pt; font-family:Arial, Helvetica, Geneva, sans-serif;}
table {width:100%; margin-top:1px; margin-bottom:20px; border:1px lightgrey solid; border-collapse:collapse;}
tr.Start {color:blue;}
tr.End { color:blue;}
tr.Trace {color:gray;}
tr.Debug {color:gray;}
tr.Info {color:black;}
tr.Warning {color:darkred;}
tr.Error {color:red;}
tr.Fatal {color:red;}
th {text-align:left;}
td {text-align:left; border-top:1px lightgrey solid;}
td.level {font-size:smaller;}
td.time {font-size:smaller;}
</style>
)html";

// The tab behind the third closing brace belongs to the report.
constexpr char script[] = R"html(<script type="text/javascript" language="JavaScript">
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

constexpr char body[] = R"html(</head>
<body  onload="initialize()">
<div  id='log'>
<table>
<tr><th>Level</th><th>Message</th><th>Time</th></tr>)html";

constexpr char tail[] = R"html(</table>
</div>
</body>
</html>)html";

std::string rowClass(LogRecord const & record) {
    std::string name = record.getLevel().getName();
    if (record.getTag() == LogRecord::Start) {
        name += " Start";
    } else if (record.getTag() == LogRecord::End) {
        name += " End";
    }
    return name;
}

} // namespace

HTMLLogFormatter::~HTMLLogFormatter() = default;

std::string HTMLLogFormatter::format(Quillon::System::Externalizable const & record) {
    try {
        auto const & logRecord = dynamic_cast<LogRecord const &>(record);
        return "<tr class='" + rowClass(logRecord) + "'><td class='level'>" + logRecord.getLevel().getName() +
               "</td><td class='message'>" + logRecord.getMessage() + "</td><td class='time'>" + util::now() +
               "</td></tr>";
    } catch (...) {
        return "<tr><td col=3>" + SimpleFormatter::format(record) + "</td></tr>";
    }
}

std::string HTMLLogFormatter::getHead() { return std::string(head) + styleSheet + script + body; }

std::string HTMLLogFormatter::getTail() { return tail; }

} // namespace ZEL
