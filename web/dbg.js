const d = require('./js/detectors.js');
const files = JSON.parse(require('fs').readFileSync(process.env.TEXTS || '/tmp/d4/recall/texts.json','utf8'));
const f = files.find(f=>f.file===process.argv[2]);
const t = f.pages.join('\f');
if (process.argv[3]) console.log(t.slice(0, Number(process.argv[3])));
console.log(d.detectText(t,{kinds: process.argv[4] ? process.argv[4].split(',') : undefined, latestYear:2026}).map(x=>[x.kind,x.text,x.confidence]));
