#include <ZEL/logging/HTMLLogFormatter.h>
#include <ZEL/logging/HtmlPage.h>
#include <ZEL/logging/LogRecord.h>
#include <ZEL/logging/Now.h>

namespace ZEL {

namespace {

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

constexpr char tableHead[] = R"html(<div  id='log'>
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

std::string HTMLLogFormatter::getHead() {
    return html::prologue("FEN Logger Report ") + styleSheet + std::string(html::script()) +
           std::string(html::bodyStart()) + tableHead;
}

std::string HTMLLogFormatter::getTail() { return tail; }

} // namespace ZEL
