"""Pages of every kind that scrolling captures have met, each with the columns that scroll."""
import random

WIDTH, HEIGHT = 1100, 704
WORDS = ("pack my box with five dozen jugs the quick brown fox jumps over lazy dogs while amber waves of grain "
         "fold under violet evening skies near harbour lights").split()


def words(seed, count):
    rng = random.Random(seed)
    return " ".join(rng.choice(WORDS) + ("." if rng.random() < .1 else "") for _ in range(count))


def article(paragraphs=26, seed=1, extra=lambda i: ""):
    return "".join(f"<h2>{i}. {words(seed + i, 4)}</h2><p>{words(seed * 1000 + i, 40 + i * 37 % 50)}</p>{extra(i)}"
                   for i in range(paragraphs))


def svg(i, width=500, height=200):
    rng = random.Random(i)
    marks = "".join(f"<circle cx='{rng.randrange(width)}' cy='{rng.randrange(height)}' r='{rng.randrange(5, 40)}' "
                    f"fill='hsl({rng.randrange(360)} 70% 60%)'/>" for _ in range(24))
    return (f"<svg xmlns='http://www.w3.org/2000/svg' width='{width}' height='{height}'>"
            f"<rect width='100%' height='100%' fill='#eef'/>{marks}</svg>")


# Tells in the title how many pixels high a view has to be to show all of it, and how many this one is.
HEIGHT_IN_TITLE = ("<script>setInterval(()=>{const i=document.querySelector('.p>article'),d=devicePixelRatio;document.title='Scrolled '"
                   "+Math.ceil(d*(i?innerHeight-i.parentNode.clientHeight+i.offsetHeight+20:document.documentElement."
                   "getBoundingClientRect().height))+' '+Math.round(d*innerHeight)},100)</script>")


def page(style, body):
    return ("<!doctype html><meta charset=utf-8><title>Scrolled</title><style>html{overflow-y:scroll}*{box-sizing:border-box}"
            "body{margin:0;font:15px/1.6 sans-serif;background:#fff}p{margin:0 0 14px}h2{margin:18px 0 8px}"
            f"{style}</style>{body}{HEIGHT_IN_TITLE}")


def side(width, inner, more=""):
    return page(f"aside{{position:fixed;left:0;top:0;bottom:0;width:{width}px;background:#eef0f6;padding:12px;"
                f"font-size:13px;overflow:hidden}}main{{margin-left:{width}px;padding:20px 40px}}{more}",
                f"<aside>{inner}</aside><main>{article()}</main>")


def links(count, seed):
    return "".join(f"<div>{words(seed + i, 2)}</div>" for i in range(count))


def mails():
    rows = "".join(f"<div class=m><b>{words(900 + i, 2)}</b> {words(700 + i, 8)}</div>" for i in range(110))
    return page(".l{position:fixed;left:0;top:60px;bottom:0;width:200px;background:#f6f8fc;padding:16px}"
                "header{position:fixed;top:0;left:0;right:0;height:60px;background:#f6f8fc;padding:18px;z-index:2}"
                ".m{margin-left:200px;height:36px;border-bottom:1px solid #ddd;padding:6px 16px;overflow:hidden;white-space:nowrap}"
                "main{padding-top:60px}",
                f"<header>Mail</header><div class=l>{links(9, 50)}</div><main>{rows}</main>")


def lit_rows():
    return mails().replace("</style>", ".m:hover{background:#ffe9a8;box-shadow:inset 3px 0 #c80}</style>", 1)


def code():
    lines = "".join(f"<div>{i:4} {'&nbsp;' * (4 * (i * 7 % 4))}{words(i, 5).replace(' ', '_')}()</div>"
                    for i in range(180))
    return page(".f{position:fixed;left:0;top:0;bottom:0;width:260px;background:#f6f8fa;padding:10px;overflow:hidden}"
                "pre{margin:0 0 0 260px;font:13px/20px monospace}",
                f"<div class=f>{links(26, 20)}</div><pre>{lines}</pre>")


def table_of_contents():
    return page(".t{position:fixed;right:20px;top:60px;width:230px;font-size:13px}main{padding:20px 290px 20px 40px}",
                f"<div class=t>{links(18, 33)}</div><main>{article()}</main>")


def sticky_sections():
    parts = "".join(f"<section><h3>Section {i} {words(i, 3)}</h3><p>{words(40 + i, 120 + i * 31 % 60)}</p></section>"
                    for i in range(16))
    return page("h3{position:sticky;top:0;background:#fff8e0;border-bottom:1px solid #ccc;margin:0;padding:10px 40px}"
                "p{padding:10px 40px}", parts)


def tall_header():
    return page("header{position:sticky;top:-150px;height:210px;background:#234;color:#fff;padding:20px 40px;z-index:2}"
                "header div{position:absolute;bottom:14px}main{padding:10px 40px}",
                f"<header><h1>{words(3, 4)}</h1><div>{words(4, 6)}</div></header><main>{article()}</main>")


def fixed_background():
    return page("body{background:#dde url(\"data:image/svg+xml;utf8,<svg xmlns='http://www.w3.org/2000/svg' width='40' "
                "height='40'><circle cx='20' cy='20' r='8' fill='%23bbd'/></svg>\") fixed}"
                "article{margin:0 120px;padding:20px 30px;background:#fff}",
                "".join(f"<article>{article(4, 10 + i)}</article>" for i in range(6)))


def blank_areas():
    return page("main{padding:20px 40px}div{height:430px}",
                f"<main>{article(14, 5, lambda i: '<div></div>' if i % 3 == 1 else '')}</main>")


def inner_pane():
    return page(".p{position:fixed;left:140px;right:160px;top:90px;bottom:70px;overflow-y:scroll;border:1px solid #999;"
                "padding:10px 20px}article{display:flow-root}body{background:#e8ecef}h1{margin:20px 140px;font-size:22px}",
                f"<h1>{words(8, 5)}</h1><div class=p><article>{article(20)}</article></div>")


FLOAT = ".c{position:fixed;right:70px;bottom:24px;width:64px;height:64px;border-radius:32px;background:#06c;color:#fff;" \
        "text-align:center;line-height:64px;box-shadow:0 4px 12px #0006}main{padding:20px 40px}"


def bubble():
    return page(FLOAT, f"<div class=c>Chat</div><main>{article()}</main>")


def bubble_between():
    return page(FLOAT + "header,footer{position:fixed;left:0;right:0;height:50px;background:#f4f4f4;padding:12px 40px}"
                "header{top:0}footer{bottom:0}.c{bottom:70px}main{padding:60px 40px}",
                f"<header>{words(2, 5)}</header><div class=c>Chat</div><main>{article()}</main><footer>{words(6, 7)}</footer>")


def to_top():
    return page(FLOAT + ".c{display:none}", f"<div class=c>Top</div><main>{article()}</main><script>addEventListener("
                "'scroll',()=>document.querySelector('.c').style.display=scrollY>200?'block':'none')</script>")


def spinner():
    return page("main{padding:20px 40px}.s{width:60px;height:60px;border:8px solid #ccc;border-top-color:#06c;"
                "border-radius:50%;animation:r 1s linear infinite;margin:10px 760px 10px 0}"
                "@keyframes r{to{transform:rotate(360deg)}}p{margin-right:0}",
                f"<main>{article(26, 1, lambda i: '<div class=s></div>' if i % 4 == 1 else '')}</main>")


def canvas():
    return page("main{padding:20px 40px}canvas{float:right;margin:0 0 10px 20px}",
                "<main><canvas width=240 height=160></canvas>" + article(26, 1) + "</main><script>const c=document."
                "querySelector('canvas').getContext('2d');let t=0;setInterval(()=>{c.fillStyle='#fff';c.fillRect(0,0,240,160);"
                "for(let i=0;i<12;i++){c.fillStyle=`hsl(${i*30} 70% 50%)`;c.fillRect(i*20,80+60*Math.sin(t+i),16,16)}t+=.1},33)</script>")


def late_pictures():
    def figure(i):
        return f"<div class=v id=v{i}></div><template>{svg(i)}</template>" if i % 2 else ""
    return page("main{padding:20px 40px}.v{width:500px;height:200px;background:#ddd;margin-bottom:14px}",
                f"<main>{article(18, 1, figure)}</main><script>new Set(document.querySelectorAll('.v')).forEach(v=>"
                "new IntersectionObserver((e,o)=>{if(e[0].isIntersecting){o.disconnect();setTimeout(()=>v.innerHTML="
                "v.nextSibling.innerHTML,450)}}).observe(v))</script>")


def fading_rows():
    return page("main{padding:20px 40px}p,h2{opacity:0;transition:opacity .6s}.in{opacity:1}",
                f"<main>{article()}</main><script>document.querySelectorAll('p,h2').forEach(v=>new IntersectionObserver("
                "e=>e[0].isIntersecting&&v.classList.add('in')).observe(v))</script>")


def added_at_the_end():
    more = [f"<h2>More {i}</h2><p>{words(500 + i, 150)}</p>" for i in range(12)]
    return page("main{padding:20px 40px}",
                f"<main>{article(12)}</main><div id=e>Loading…</div><script>const more={more!r};const m=document."
                "querySelector('main');let busy=false;new IntersectionObserver(e=>{if(e[0].isIntersecting)go()},{rootMargin:"
                "'0px'}).observe(document.querySelector('#e'));function go(){if(busy)return;busy=true;setTimeout(()=>{for(let i=0;"
                "i<3&&more.length;i++)m.insertAdjacentHTML('beforeend',more.shift());busy=false;if(!more.length){document."
                "querySelector('#e').textContent='That is all.'}else if(document.querySelector('#e').getBoundingClientRect()."
                "top<innerHeight)go()},700)}</script>")


def rows_alike():
    rows = "<div class=r>the same row</div>" * 70
    return page(".r{height:24px;padding:0 40px;border-bottom:1px solid #eee}main{padding:20px 40px}",
                f"<main>{article(6)}</main>{rows}<main>{article(6, 9)}</main>")


def plain():
    return page("header{position:sticky;top:0;background:#fff;border-bottom:1px solid #ccc;padding:14px 24px}main{padding:10px 40px}",
                f"<header>A header that stays</header><main>{article()}</main>")


# name: (page, first column, end column)
KINDS = {
    "plain": (plain(), 10, 1040),
    "side bar": (side(220, links(24, 1)), 230, 1040),
    "icon rail": (side(56, "".join(svg(i, 32, 32) for i in range(9))), 70, 1040),
    "mail list": (mails(), 210, 1040),
    "lit rows": (lit_rows(), 210, 1040),
    "files and code": (code(), 270, 1040),
    "contents": (table_of_contents(), 10, 800),
    "sticky sections": (sticky_sections(), 10, 1040),
    "tall header": (tall_header(), 10, 1040),
    "fixed background": (fixed_background(), 130, 960),
    "blank areas": (blank_areas(), 10, 1040),
    "inner pane": (inner_pane(), 150, 900),
    "chat bubble": (bubble(), 10, 900),
    "bubble between": (bubble_between(), 10, 900),
    "to the top": (to_top(), 10, 900),
    "spinner": (spinner(), 120, 1040),
    "canvas": (canvas(), 10, 780),
    "late pictures": (late_pictures(), 10, 1040),
    "fading rows": (fading_rows(), 10, 1040),
    "added at the end": (added_at_the_end(), 10, 1040),
    "rows alike": (rows_alike(), 10, 1040),
}
