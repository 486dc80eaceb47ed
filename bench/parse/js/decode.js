// Decodes a saved query reply with the official Parse JavaScript SDK, the way it turns a
// find() reply into records: JSON text parsed, then Parse.Object.fromJSON per row.
// Prints the median time of five runs (after one warm-up) and the memory the first decode took.
//   node decode.js reply.json
'use strict';
const fs = require('fs');
const Parse = require('parse/node');

Parse.initialize('bench-app', 'bench-js-key');
Parse.serverURL = 'http://127.0.0.1:9/unused';

function rssKb(field) {
  const status = fs.readFileSync('/proc/self/status', 'utf8');
  const m = status.match(new RegExp('^' + field + ':\\s+(\\d+) kB', 'm'));
  return m ? Number(m[1]) : 0;
}

function decode(text) {
  const reply = JSON.parse(text);
  return reply.results.map((row) => Parse.Object.fromJSON(Object.assign({ className: 'Message' }, row)));
}

const text = fs.readFileSync(process.argv[2], 'utf8');
const before = rssKb('VmRSS');
let kept = decode(text);
const peakMb = (rssKb('VmHWM') - before) / 1024;
if (kept.length === 0 || !kept[0].get('from') || !kept[0].get('from').get('firstName')) {
  console.error('decode produced no rows with an included sender');
  process.exit(1);
}
const times = [];
for (let i = 0; i < 6; i++) {
  kept = null;
  const start = process.hrtime.bigint();
  kept = decode(text);
  const ms = Number(process.hrtime.bigint() - start) / 1e6;
  if (i > 0) times.push(ms);
}
times.sort((a, b) => a - b);
console.log(JSON.stringify({ rows: kept.length, medianMs: times[2], memoryMb: peakMb }));
