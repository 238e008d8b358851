// Without scripts the page shows the pictures, the legend as a table and the programs' text; the script adds
// the slider, the sides and the lighting of groups and lines. On a narrow screen the picture's own titles are
// too small to be read, so the heading above it takes their place. A click finds the work beside it too: a
// bore is a few pixels wide there, and the drawing lies over the work.
#include "scene/picture_page.h"

#include <algorithm>

#include "scene/run_time.h"

namespace kv {

namespace {

constexpr std::size_t MostRows = 2000; // of the table of operations

constexpr std::string_view PageStyle = R"(
:root{color-scheme:light dark}
body{margin:0;font-family:sans-serif;background:#fbf8f2;color:#2b2418}
@media (prefers-color-scheme:dark){body{background:#1d1a16;color:#f0e8da}}
article{display:grid;grid-template-columns:minmax(0,3fr) minmax(16em,1fr);gap:1em;padding:1em;max-width:110em;margin:auto}
.view svg{width:100%;height:auto;max-height:78vh;border:1px solid #7a6440;touch-action:pan-x pan-y}
.bar{display:flex;flex-wrap:wrap;gap:.5em;align-items:center;margin:.5em 0}
.bar input[type=range]{flex:1 1 12em;height:2.4em;margin:0;accent-color:#7a6440}
button{font:inherit;padding:.3em .7em;border:1px solid #7a6440;border-radius:.3em;background:none;color:inherit;min-height:2.4em}
button[aria-pressed=true]{background:#7a6440;color:#fff}
h2,h2+p{margin:0 0 .3em;overflow-wrap:anywhere}h2{font-size:1.15em}.title-of{display:none}
table{border-collapse:collapse;width:100%;font-size:.95em}td,th{padding:.25em .4em;border-bottom:1px solid #7a644055;text-align:left}
tr.off{text-decoration:line-through}
td button{width:100%;text-align:left;border:0}
header{padding:1em;max-width:110em;margin:auto}h1{overflow-wrap:anywhere}
pre{max-height:40vh;overflow:auto;border:1px solid #7a644055;padding:.5em;margin:.6em 0 0;font-size:.9em}
pre .now{background:#0b6e9955;outline:1px solid #0b6e99}
.item.later,.rapid.later{visibility:hidden}.item.now{filter:drop-shadow(0 0 3px #0b6e99)}.item.off,.rapids.off,.drawing.off,.order.off{display:none}
details{margin:.6em 0 0}summary{min-height:2.4em}.time{margin:.3em 0}
.says{min-height:1.5em;margin:.3em 0;overflow-wrap:anywhere}
@media (max-width:60em){
article{grid-template-columns:minmax(0,1fr)}
.title-of{display:block}.view .title,.view .small{display:none}
.figures tbody,.figures tr{display:flex}.figures tr{flex:1 1 auto;flex-direction:column}
.figures{font-size:.8em}.figures td,.figures th{white-space:nowrap;line-height:1.3em;padding:.25em}}
)";

constexpr std::string_view PageScript = R"(
var current=document.querySelector('article'),reach=12;
document.addEventListener('keydown',function(event){
 var page=event.target.closest('article')||current;if(page)page.turn(event);});
document.querySelectorAll('article').forEach(function(page){
 var items=[].slice.call(page.querySelectorAll('.item')),rapids=[].slice.call(page.querySelectorAll('.rapid'));
 var lines=[].slice.call(page.querySelectorAll('pre span'));
 var slider=page.querySelector('input[type=range]'),says=page.querySelector('.says'),svg=page.querySelector('svg');
 var whole=svg.getAttribute('viewBox');
 function at(item,name){return +item.getAttribute('data-'+name);}
 function show(line,clicked){
  slider.value=line;var text='';
  items.forEach(function(item){
   item.classList.toggle('later',at(item,'line')>line);
   var now=at(item,'line')<=line&&line<=at(item,'last');item.classList.toggle('now',now);
   if(now&&(!clicked||item===clicked))text=item.querySelector('title').textContent;});
  rapids.forEach(function(way){way.classList.toggle('later',at(way,'line')>line);});
  lines.forEach(function(row,i){row.classList.toggle('now',i+1===line);});
  says.textContent=text||'Line '+line;
  if(lines[line-1]){var box=lines[line-1].parentNode;box.scrollTop=lines[line-1].offsetTop-box.offsetTop-box.clientHeight/2;}
 }
 slider.addEventListener('input',function(){show(+slider.value);});
 function itemAt(x,y){
  return document.elementsFromPoint(x,y).map(function(part){return part.closest('.item');}).find(function(item){
   return item&&svg.contains(item);});
 }
 function farFrom(shape,x,y){
  var box=shape.getBoundingClientRect();
  var far=Math.hypot(Math.max(box.left-x,0,x-box.right),Math.max(box.top-y,0,y-box.bottom));
  if(far>reach||shape.tagName==='circle')return far;
  var toScreen=shape.getScreenCTM(),length=shape.getTotalLength();far=Infinity;
  for(var gone=0;gone<=length;gone+=4/toScreen.a){
   var on=shape.getPointAtLength(gone).matrixTransform(toScreen);far=Math.min(far,Math.hypot(on.x-x,on.y-y));}
  return far;
 }
 function itemNear(x,y){
  var nearest=null,least=reach;
  items.forEach(function(item){
   if(item.matches('.off,.later'))return;
   item.querySelectorAll('.way,.lead,.row,.blade-middle,.hole,.unknown').forEach(function(shape){
    var far=farFrom(shape,x,y);if(far<=least){least=far;nearest=item;}});});
  return nearest;
 }
 function choose(item){
  if(at(item,'last')>0)return show(at(item,'last'),item);
  items.forEach(function(other){other.classList.toggle('now',other===item);}); // of the second program: no line here
  says.textContent=item.querySelector('title').textContent;
 }
 svg.addEventListener('click',function(event){
  var item=itemAt(event.clientX,event.clientY)||itemNear(event.clientX,event.clientY);
  if(item)choose(item);});
 page.querySelectorAll('[data-go]').forEach(function(button){button.addEventListener('click',function(){
  show(+button.getAttribute('data-go'));});});
 lines.forEach(function(row,i){row.addEventListener('click',function(){show(i+1);});});
 page.querySelectorAll('[data-light]').forEach(function(button){button.addEventListener('click',function(){
  var off=button.closest('tr').classList.toggle('off');button.setAttribute('aria-pressed',String(!off));
  items.forEach(function(item){if(at(item,'group')===+button.getAttribute('data-light'))item.classList.toggle('off',off);});});});
 page.querySelectorAll('[data-view]').forEach(function(button){button.addEventListener('click',function(){
  svg.setAttribute('viewBox',button.getAttribute('data-view')||whole);});});
 ['rapids','drawing','order'].forEach(function(name){
  var button=page.querySelector('[data-'+name+']');if(!button)return;
  button.addEventListener('click',function(){
   var off=page.querySelector('.'+name).classList.toggle('off');button.setAttribute('aria-pressed',String(!off));});});
 var timer=0,play=page.querySelector('[data-play]');
 function stop(){clearInterval(timer);timer=0;play.setAttribute('aria-pressed','false');}
 play.addEventListener('click',function(){
  if(timer)return stop();
  if(+slider.value>=+slider.max)show(1);
  play.setAttribute('aria-pressed','true');
  timer=setInterval(function(){if(+slider.value>=+slider.max)return stop();show(+slider.value+1);},200);});
 page.turn=function(event){
  var on=event.target.tagName;
  if(event.altKey||event.ctrlKey||event.metaKey||on==='INPUT')return;
  if(event.key==='ArrowRight')show(Math.min(+slider.max,+slider.value+1));
  else if(event.key==='ArrowLeft')show(Math.max(1,+slider.value-1));
  else if(event.key===' '&&on!=='BUTTON')play.click();else return;
  event.preventDefault();};
 ['pointerdown','focusin'].forEach(function(name){page.addEventListener(name,function(){current=page;});});
});
)";

std::vector<std::string> RowsOf(const std::string& text)
{
    std::vector<std::string> rows(1);
    for (const char c : text) {
        if (c == '\n')
            rows.emplace_back();
        else if (c != '\r')
            rows.back() += c;
    }
    if (rows.back().empty())
        rows.pop_back();
    return rows;
}

std::string ViewButton(const std::string& name, const std::string& box)
{
    return "<button data-view=\"" + box + "\">" + name + "</button>";
}

std::string Bar(const PictureOfProgram& picture, std::size_t lines)
{
    std::string text = "<div class=\"bar\">" + ViewButton("Fit", "");
    for (const SceneView& view : picture.Picture.Views)
        if (view.Items > 0)
            text += ViewButton("Side " + std::to_string(static_cast<int>(view.On)),
                               SvgViewOf(picture.Picture, picture.Title, view));
    if (!picture.Picture.Drawn.empty())
        text += "<button data-drawing aria-pressed=\"true\">Drawing</button>";
    return text +
           "<button data-rapids aria-pressed=\"true\">Rapids</button>"
           "<button data-order aria-pressed=\"false\">Order</button></div>\n"
           "<div class=\"bar\"><button data-play aria-pressed=\"false\">Play</button>"
           "<input type=\"range\" aria-label=\"Line of the program\" min=\"1\" max=\"" +
           std::to_string(lines) + "\" value=\"" + std::to_string(lines) +
           "\"></div>\n<p class=\"says\" role=\"status\">Left and Right go through the lines, Space plays "
           "them.</p>\n<p class=\"time\">" +
           XmlText(TimeForPeople(FiguresOf(picture.Picture).Seconds)) + ", an estimate</p>\n";
}

// For whoever hears the page instead of seeing it. Work of a second program has no line here.
std::string Operations(const Scene& scene)
{
    std::string text = "<details><summary>The operations as a table</summary>\n<table><tr><th>Line</th>"
                       "<th>Operation</th></tr>\n";
    const std::size_t shown = std::min(scene.Items.size(), MostRows);
    for (std::size_t i = 0; i < shown; ++i) {
        const SceneItem& item = scene.Items[i];
        const std::string line = std::to_string(item.Line);
        const bool hasLine = item.Held != HeldIn::Second && item.Line > 0;
        text += "<tr><td>" + (hasLine ? "<button data-go=\"" + line + "\">" + line + "</button>" : line) +
                "</td><td>" + XmlText(ItemSentence(item)) + "</td></tr>\n";
    }
    if (scene.Items.size() > shown)
        text += "<tr><td></td><td>and " + std::to_string(scene.Items.size() - shown) + " more</td></tr>\n";
    return text + "</table></details>\n";
}

std::string Legend(const Scene& scene)
{
    std::string text = "<table><caption>Work</caption><tr><th>What</th><th>Count</th></tr>\n";
    for (std::size_t i = 0; i < scene.Groups.size(); ++i)
        text += "<tr><td><button data-light=\"" + std::to_string(i) + "\" aria-pressed=\"true\">" +
                XmlText(GroupText(scene.Groups[i])) + "</button></td><td>" +
                std::to_string(scene.Groups[i].Count) + "</td></tr>\n";
    return text + "</table>\n";
}

std::string Heading(const PictureTitle& title)
{
    std::string text = "<h2 class=\"title-of\">" + XmlText(title.Name) + "</h2>";
    for (const std::string& line : title.Lines)
        text += "<p class=\"title-of\">" + XmlText(line) + "</p>";
    return text + "\n";
}

std::string Article(const PictureOfProgram& picture)
{
    const std::vector<std::string> rows = RowsOf(picture.Text);
    std::string text = "<article tabindex=\"0\"><div class=\"view\">" + Heading(picture.Title) +
                       SvgElement(picture.Picture, picture.Title, true) +
                       Bar(picture, std::max<std::size_t>(1, rows.size())) + "</div><div class=\"side\">" +
                       Legend(picture.Picture) + "<pre tabindex=\"0\">";
    for (const std::string& row : rows)
        text += "<span>" + XmlText(row) + "</span>\n";
    return text + "</pre>" + Operations(picture.Picture) + "</div></article>\n";
}

} // namespace

std::string PicturePage(const std::vector<PictureOfProgram>& pictures, const std::string& opening)
{
    std::string page = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>";
    page += pictures.empty() ? "Korvanti" : XmlText(pictures.front().Title.Name);
    page +=
        "</title>\n<style>" + PictureStyle() + std::string(PageStyle) + "</style></head><body>\n" + opening;
    for (const PictureOfProgram& picture : pictures)
        page += Article(picture);
    return page + "<script>" + std::string(PageScript) + "</script></body></html>\n";
}

} // namespace kv
