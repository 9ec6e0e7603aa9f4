#pragma once

namespace vexil::host {

/// The style sheet of the report.
inline constexpr const char* htmlStyle = R"css(
:root { color-scheme: light dark; --page: #f4f5f7; --sheet: #ffffff; --ink: #1c2430; --soft: #5d6878;
  --line: #dfe3e9; --good: #17784a; --good-back: #e3f4ea; --bad: #b3261e; --bad-back: #fce8e6;
  --warn: #8a5a00; --warn-back: #fdf1d8; }
@media (prefers-color-scheme: dark) { :root { --page: #12161c; --sheet: #1a2029; --ink: #e6eaf0; --soft: #9aa6b6;
  --line: #2d3542; --good: #6fd49b; --good-back: #17362a; --bad: #ff9c92; --bad-back: #43201e; --warn: #f0c36a;
  --warn-back: #3b2f16; } }
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--ink);
  font: 15px/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "Liberation Sans", "DejaVu Sans", sans-serif; }
main { max-width: 940px; margin: 32px auto; padding: 0 20px; }
h1 { font-size: 26px; line-height: 1.2; margin: 0 0 4px; letter-spacing: -0.01em; }
h2 { font-size: 17px; margin: 36px 0 12px; }
.when { color: var(--soft); margin: 0 0 20px; }
.verdict { border-radius: 10px; padding: 16px 20px; font-size: 18px; font-weight: 600; }
.good { background: var(--good-back); color: var(--good); }
.bad { background: var(--bad-back); color: var(--bad); }
.warn { background: var(--warn-back); color: var(--warn); }
.counts { font-size: 14px; font-weight: 400; margin-top: 2px; }
.sheet { background: var(--sheet); border: 1px solid var(--line); border-radius: 10px; padding: 16px 20px;
  margin-bottom: 12px; }
.cards { display: grid; grid-template-columns: repeat(auto-fit, minmax(280px, 1fr)); gap: 12px; }
.cards .sheet { margin: 0; }
.name { font-weight: 600; font-size: 16px; }
.id { color: var(--soft); font: 13px ui-monospace, "DejaVu Sans Mono", monospace; margin-left: 6px; }
dl { display: grid; grid-template-columns: max-content 1fr; gap: 3px 16px; margin: 8px 0 0; font-size: 14px; }
dt { color: var(--soft); }
dd { margin: 0; overflow-wrap: anywhere; font-variant-numeric: tabular-nums; }
.notice { margin: 10px 0 0; padding: 8px 12px; border-radius: 6px; font-size: 14px; }
table { width: 100%; border-collapse: collapse; font-size: 14px; }
th { text-align: left; color: var(--soft); font-weight: 500; padding: 4px 12px 8px 0; }
td { border-top: 1px solid var(--line); padding: 8px 12px 8px 0; vertical-align: top; }
th:last-child, td:last-child { text-align: right; padding-right: 0; white-space: nowrap;
  font-variant-numeric: tabular-nums; }
.badge { display: inline-block; border-radius: 999px; padding: 1px 10px; font-size: 13px; font-weight: 600;
  white-space: nowrap; }
.message { color: var(--soft); font-size: 13px; }
footer { color: var(--soft); font-size: 13px; margin: 24px 0 40px; }
@media print {
  :root { --page: #fff; --sheet: #fff; --ink: #000; --soft: #444; --line: #bbb; --good: #0b5c36; --good-back: #fff;
    --bad: #8c1d18; --bad-back: #fff; --warn: #6b4600; --warn-back: #fff; }
  body { font-size: 11pt; }
  main { max-width: none; margin: 0; padding: 0; }
  .verdict, .badge, .notice { border: 1px solid currentColor; }
  .cards .sheet, tr { break-inside: avoid; }
  h2 { break-after: avoid; }
}
)css";

} // namespace vexil::host
