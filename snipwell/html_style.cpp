#include "snipwell/html_parts.h"

namespace snipwell {

const char* const kHtmlStyle = R"css(
:root {
  color-scheme: light dark;
  --page: #f6f6f3; --card: #fff; --ink: #1e2227; --soft: #656c76; --edge: #e2e1db;
  --alarm: #b3261e; --curve: #0b7a75; --left: #fff0bf; --mark: #d99500;
  --word: #8a2be2; --text: #20723a; --value: #0a5fb4;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #14161a; --card: #1c1f25; --ink: #e4e5e3; --soft: #98a0ab; --edge: #30353e;
    --alarm: #ff8a80; --curve: #4fd1c5; --left: #40361a; --mark: #f0b93a;
    --word: #c9a2ff; --text: #8bd49c; --value: #82bdff;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; max-width: 1500px; padding: 2rem clamp(1rem, 3vw, 3rem) 3rem;
  background: var(--page); color: var(--ink); font: 15px/1.5 system-ui, sans-serif;
}
h1, h2, h3, p, dl, dd, ul, table { margin: 0; }
h1 { font-size: clamp(1.25rem, 2.4vw, 1.7rem); line-height: 1.3; overflow-wrap: anywhere; }
h2 { font-size: 1.05rem; margin: 2.2rem 0 .7rem; }
h3 { font: 600 13px/1.5 ui-monospace, monospace; padding: .6rem 1rem; overflow-wrap: anywhere; }
small, .kind, .compiler, dt, th, footer { color: var(--soft); }
h3 small { font: 13px system-ui, sans-serif; margin-left: .6em; }
.kind { color: var(--alarm); font-weight: 600; margin-bottom: .3rem; }
.compiler { margin-top: .5rem; overflow-wrap: anywhere; }
article, pre, .plotted, dl > div {
  background: var(--card); border: 1px solid var(--edge); border-radius: 8px; overflow: hidden;
}
dl { display: grid; grid-template-columns: repeat(auto-fit, minmax(9.5rem, 1fr)); gap: .8rem;
     margin-top: 1.6rem; }
dl > div { padding: .7rem 1rem .8rem; display: flex; flex-direction: column; }
dd { font-size: clamp(1.15rem, 5vw, 1.55rem); white-space: nowrap; font-weight: 600;
     line-height: 1.3; font-variant-numeric: tabular-nums; }
dd small { display: block; font-size: 13px; font-weight: 400; }
.columns { display: grid; gap: 0 1.4rem; align-items: start; }
.columns > * { min-width: 0; }
article + article { margin-top: .8rem; }
pre, .file {
  margin: 0; font: 12.5px/1.6 ui-monospace, "DejaVu Sans Mono", monospace; tab-size: 4;
  white-space: pre-wrap; overflow-wrap: anywhere;
}
pre { padding: .8rem 1rem; }
article pre { border-width: 1px 0 0; border-radius: 0; }
pre + article, article + p { margin-top: .8rem; }
.file { padding-bottom: .5rem; border-top: 1px solid var(--edge); }
.file div { position: relative; padding: 0 1rem 0 4.6rem; color: var(--soft); min-height: 1.6em; }
.file div::before {
  content: attr(data-n); position: absolute; left: 0; width: 3.6rem; text-align: right; opacity: .7;
}
.file .left { background: var(--left); color: var(--ink); box-shadow: inset 4px 0 var(--mark); }
summary { padding: .15rem 1rem .15rem 4.6rem; color: var(--soft); cursor: pointer;
          background: var(--page); font: 12.5px/1.6 system-ui, sans-serif; }
.strip { display: block; width: 100%; height: 8px; background: var(--page); fill: var(--mark); }
.c { color: var(--soft); font-style: italic; }
.s { color: var(--text); }
.m { color: var(--value); }
.k { color: var(--word); }
.plotted { padding: 2rem 2rem 2.4rem 4.6rem; }
.plot { display: block; width: 100%; height: 230px; overflow: visible; }
.plot line { stroke: var(--edge); }
.plot text { fill: var(--soft); font-size: 12px; }
.plot .y { text-anchor: end; dominant-baseline: middle; }
.plot .x { text-anchor: middle; }
.plot .end { text-anchor: end; fill: var(--ink); font-weight: 600; }
.curve { fill: none; stroke: var(--curve); stroke-width: 2; vector-effect: non-scaling-stroke; }
.area { fill: var(--curve); opacity: .12; }
.plot circle { fill: var(--curve); }
table { border-collapse: collapse; width: 100%; font-variant-numeric: tabular-nums; }
th, td { padding: .35rem .2rem; border-bottom: 1px solid var(--edge); text-align: right; }
th { font-weight: 400; font-size: 13px; }
th:first-child, td:first-child { text-align: left; overflow-wrap: anywhere; }
li { overflow-wrap: anywhere; }
ul { padding-left: 1.2rem; }
code { font: 13px ui-monospace, monospace; }
footer { margin-top: 2.5rem; font-size: 13px; }
@media (max-width: 62rem) {
  .result { order: -1; }
}
@media (min-width: 62rem) {
  .compared { grid-template-columns: minmax(0, 1.25fr) minmax(0, 1fr); }
  .result { position: sticky; top: 1rem; }
  .result pre { max-height: calc(100vh - 12rem); overflow-y: auto; }
  .sizes { grid-template-columns: minmax(0, 2fr) minmax(0, 1fr); }
}
@media (max-width: 40rem) {
  .file div { padding-left: 3.4rem; }
  .file div::before { width: 2.7rem; }
  summary { padding-left: 3.4rem; }
  .plotted { padding: 1.6rem 1.2rem 2.2rem 4.2rem; }
}
)css";

}  // namespace snipwell
