"""More pages, in other styles: what stands or moves by itself does so in the ways of other sites. Each with the columns
that scroll, and what the survey has to know of it."""
from pages import article, links, page, svg, words

DARK = "body{background:#14161a;color:#d8dade;font:14px/1.55 serif}a{color:#8ab4ff}"


def dark_docs():
    """The entry of what is in sight is lit in the contents."""
    parts = "".join(f"<section id=s{i}><h2>{words(i + 60, 3)}</h2><p>{words(300 + i, 90 + i * 23 % 70)}</p><pre>"
                    + "\n".join(words(i * 9 + k, 4).replace(" ", ".") + "();" for k in range(5)) + "</pre></section>"
                    for i in range(14))
    entries = "".join(f"<div class=e data-s=s{i}>{words(i + 60, 3)}</div>" for i in range(14))
    return page(DARK + "nav{position:fixed;left:0;top:56px;bottom:0;width:210px;padding:14px;border-right:1px solid #2a2d33}"
                "header{position:fixed;left:0;right:0;top:0;height:56px;background:#0d0f12;padding:16px;z-index:1}"
                ".t{position:fixed;right:30px;top:76px;width:200px;font-size:12px}.lit{color:#8ab4ff;border-left:2px solid #8ab4ff;padding-left:8px}"
                "main{margin:0 250px 0 210px;padding:76px 36px 30px}pre{background:#1d2026;padding:12px;font:12px/18px monospace}",
                f"<header>Documentation</header><nav>{links(20, 71)}</nav><div class=t>{entries}</div><main>{parts}</main><script>"
                "addEventListener('scroll',()=>{let now;document.querySelectorAll('section').forEach(s=>{if(s.getBoundingClientRect()."
                "top<200)now=s.id});document.querySelectorAll('.e').forEach(e=>e.classList.toggle('lit',e.dataset.s==now))})</script>")


def shrinking_header():
    return page("header{position:fixed;left:0;right:0;top:0;height:120px;background:#5a2;color:#fff;padding:16px 40px;transition:height .25s}"
                ".small{height:54px}main{padding:140px 40px 20px}",
                f"<header id=h><b>{words(3, 4)}</b></header><main>{article(22, 3)}</main><script>addEventListener('scroll',()=>"
                "document.querySelector('#h').classList.toggle('small',scrollY>60))</script>")


def hiding_header():
    return page("header{position:fixed;left:0;right:0;top:0;height:72px;background:#fff;border-bottom:1px solid #bbb;padding:20px 40px;"
                "transition:transform .25s}.away{transform:translateY(-100%)}main{padding:92px 40px 20px}",
                f"<header id=h><b>{words(5, 6)}</b></header><main>{article(22, 4)}</main><script>let y=0;addEventListener('scroll',()=>{{"
                "document.querySelector('#h').classList.toggle('away',scrollY>y);y=scrollY})</script>")


def cookie_banner():
    return page("aside{position:fixed;left:0;right:0;bottom:0;background:#1b2430;color:#eee;padding:18px 40px;box-shadow:0 -4px 16px #0005}"
                "button{float:right;margin:6px}main{padding:20px 40px 140px}",
                f"<main>{article(22, 5)}</main><aside><button>Accept</button><button>Refuse</button>{words(77, 30)}</aside>")


def frosted_header():
    return page("header{position:fixed;left:0;right:0;top:0;height:64px;background:#ffffffb0;backdrop-filter:blur(12px);padding:20px 40px;"
                "border-bottom:1px solid #0002}main{padding:84px 40px 20px}",
                f"<header><b>{words(9, 4)}</b></header><main>{article(22, 6)}</main>")


def reading_progress():
    return page("#b{position:fixed;left:0;top:0;height:4px;background:#e33;width:0}main{max-width:640px;margin:0 auto;padding:40px 0;font:18px/1.7 serif}",
                f"<div id=b></div><main>{article(18, 7)}</main><script>addEventListener('scroll',()=>document.querySelector('#b').style.width="
                "100*scrollY/(document.documentElement.scrollHeight-innerHeight)+'%')</script>")


def snapping_cards():
    cards = "".join(f"<div class=k style='background:hsl({i * 47 % 360} 60% 92%)'><h2>{words(i + 5, 3)}</h2>{words(i + 600, 60)}</div>" for i in range(14))
    return page("html{scroll-snap-type:y mandatory;scroll-behavior:smooth}.k{height:280px;margin:0 60px 20px;padding:20px;scroll-snap-align:start;border-radius:12px}", cards)


def sliding_rows():
    return page("main{padding:20px 40px}p,h2{opacity:0;transform:translateY(50px);transition:all .7s ease-out}.in{opacity:1;transform:none}",
                f"<main>{article(22, 8)}</main><script>document.querySelectorAll('p,h2').forEach(v=>new IntersectionObserver("
                "e=>e[0].isIntersecting&&v.classList.add('in'),{threshold:.05}).observe(v))</script>")


def sheet():
    head = "<tr>" + "".join(f"<th>{words(k + 40, 1)}</th>" for k in range(16)) + "</tr>"
    rows = "".join(f"<tr><td>{i + 1}</td>" + "".join(f"<td>{(i * 7919 + k * 104729) % 9973}</td>" for k in range(15)) + "</tr>" for i in range(170))
    return page(".p{position:fixed;left:40px;right:40px;top:70px;bottom:50px;overflow-x:hidden;overflow-y:scroll;padding:10px 0;border:1px solid #aaa}article{display:flow-root;width:1500px}"
                "table{border-collapse:separate;border-spacing:0;font:12px monospace}td,th{border:solid #ddd;border-width:0 1px 1px 0;min-width:90px;height:22px}"
                "th{position:sticky;top:0;background:#eef}td:first-child,th:first-child{position:sticky;left:0;background:#f6f6f6;z-index:1}"
                "h1{font-size:18px;margin:20px 40px}", f"<h1>Sheet</h1><div class=p><article><table>{head}{rows}</table></article></div>")


def recycled_rows():
    """Rows are made as they come into view, and taken away as they leave it."""
    texts = [words(i + 800, 4 + i * 5 % 9) for i in range(160)]
    return page("#l{position:relative;height:6400px;margin:0 40px}.w{position:absolute;left:0;right:0;height:40px;border-bottom:1px solid #e4e4e4;padding:9px}",
                f"<div id=l></div><script>const t={texts!r},l=document.querySelector('#l'),have=new Map();function show(){{const a=Math.floor(scrollY/40)-2,"
                "b=(scrollY+innerHeight)/40+2;for(const[i,e]of have)if(i<a||i>b){e.remove();have.delete(i)}for(let i=Math.max(0,a);i<Math.min(160,b);i++)"
                "if(!have.has(i)){const e=document.createElement('div');e.className='w';e.style.top=i*40+'px';e.textContent=i+' '+t[i];l.append(e);have.set(i,e)}}"
                "addEventListener('scroll',()=>requestAnimationFrame(show));addEventListener('resize',show);show()</script>")


def frame_in_page():
    inner = article(18, 9).replace('"', "&quot;")
    style = "html{overflow-y:scroll}body{margin:0;padding:20px 30px;font:15px/1.6 sans-serif}p{margin:0 0 14px}h2{margin:18px 0 8px}"
    return page("html{overflow:hidden}iframe{position:fixed;left:180px;top:64px;width:calc(100% - 180px);height:calc(100% - 64px);border:0}"
                "h1{margin:16px 30px;font-size:22px}.i{padding:0 30px;width:170px}",
                f"<h1>Manual</h1><div class=i>{links(16, 12)}</div><iframe srcdoc=\"<style>{style}</style><body>{inner}</body>\"></iframe>"
                ).replace("document.documentElement.getBoundingClientRect().height", "(64+document.querySelector('iframe').contentDocument.body.offsetHeight)")


def pane_in_a_shell():
    messages = "".join(f"<div class=m><i style='background:hsl({i * 67 % 360} 50% 45%)'></i><b>{words(i + 30, 2)}</b><br>{words(i + 400, 12 + i * 11 % 40)}</div>"
                       for i in range(44))
    return page(DARK + "html{overflow:hidden}.n{position:fixed;left:0;top:0;bottom:0;width:64px;background:#0b0c0e}.s{position:fixed;left:64px;top:0;bottom:0;"
                "width:220px;background:#1b1e23;overflow-y:auto;padding:12px}.h{position:fixed;left:284px;right:0;top:0;height:50px;padding:14px 20px;"
                "border-bottom:1px solid #000}.c{position:fixed;left:304px;right:20px;bottom:16px;height:46px;border-radius:8px;background:#2a2e36;padding:12px}"
                ".p{position:fixed;left:284px;right:0;top:50px;bottom:76px;overflow-y:scroll;padding:10px 0}.m{padding:8px 20px 8px 72px;position:relative}"
                ".m i{position:absolute;left:20px;top:10px;width:40px;height:40px}article{display:flow-root}",
                f"<div class=n></div><div class=s>{links(40, 90)}</div><div class=h># {words(4, 2)}</div><div class=p><article>{messages}</article></div>"
                "<div class=c>Message</div>")


def film_and_player():
    return page("main{padding:20px 340px 20px 40px}.v{display:block;margin:12px 0}#m{position:fixed;right:24px;bottom:24px;box-shadow:0 4px 18px #0007}",
                "<canvas id=m width=280 height=158></canvas><main>" + article(5, 11) + "<canvas class=v width=560 height=315></canvas>" + article(15, 12)
                + "</main><script>let t=0;setInterval(()=>{t+=.07;document.querySelectorAll('canvas').forEach(c=>{const g=c.getContext('2d');"
                "const r=g.createLinearGradient(0,0,c.width,c.height);for(let i=0;i<=6;i++)r.addColorStop(i/6,`hsl(${i*60+t*90} 60% ${40+20*Math.sin(t+i)}%)`);"
                "g.fillStyle=r;g.fillRect(0,0,c.width,c.height)})},40)</script>")


def parallax():
    return page("#a{position:absolute;left:0;right:0;top:0;height:520px;background:linear-gradient(#123,#86b);overflow:hidden;z-index:-1}#a b{position:absolute;"
                "width:120px;height:120px;border-radius:60px;background:#fff4}main{margin:320px 160px 0;background:#fff;padding:24px 40px;min-height:100px}",
                "<div id=a>" + "".join(f"<b style='left:{i * 130 % 1000}px;top:{i * 97 % 400}px'></b>" for i in range(10))
                + f"</div><main>{article(20, 13)}</main><script>addEventListener('scroll',()=>document.querySelector('#a').style.transform="
                "`translateY(${scrollY*.5}px)`)</script>")


def fixed_gradient():
    return page("body{background:linear-gradient(150deg,#1b2735,#4a2a5a,#10202c) fixed;color:#eee}div{margin:0 90px;padding:24px 40px;background:#0e1116}",
                f"<div>{article(22, 14)}</div>")


def sidebar_that_sticks():
    return page("main{display:flex;padding:0 40px}.a{width:660px}.b{position:sticky;top:20px;align-self:flex-start;margin:0 0 20px 40px;width:260px;"
                "background:#f2f2f7;padding:16px;font-size:13px}.hero{height:340px;background:#243;color:#fff;padding:40px}",
                f"<div class=hero><h1>{words(4, 6)}</h1></div><main><div class=a>{article(22, 15)}</div><div class=b>{links(20, 44)}</div></main>")


def ticker():
    return page("#k{position:sticky;top:0;background:#111;color:#fd4;height:34px;overflow:hidden;white-space:nowrap;padding:6px}main{padding:20px 40px}",
                f"<div id=k><span id=x style='position:relative'>{words(1, 60)}</span></div><main>{article(22, 16)}</main><script>let n=0;setInterval(()=>"
                "document.querySelector('#x').style.left=-(n=(n+2)%900)+'px',30)</script>")


def endless():
    return page("main{padding:20px 40px}", "<main id=m></main><div id=e style='height:40px'></div><script>let s=1,n=0;const r=()=>(s=s*16807%2147483647)/2147483647;"
                "function more(){let h='<h2>Entry '+ ++n+'</h2><p>';for(let i=0;i<120;i++)h+='amber waves fold under violet evening skies near harbour lights'"
                ".split(' ')[Math.floor(r()*9)]+' ';document.querySelector('#m').insertAdjacentHTML('beforeend',h+'</p>')}for(let i=0;i<8;i++)more();"
                "setInterval(()=>{if(document.querySelector('#e').getBoundingClientRect().top<innerHeight+400)more()},60)</script>")


def cards():
    """Pictures in three columns."""
    inner = "".join(f"<div>{svg(i + 40, 300, 140 + i * 37 % 120)}<p>{words(i + 20, 9)}</p></div>" for i in range(48))
    return page("main{columns:3;padding:20px 30px;column-gap:16px}div{break-inside:avoid;border:1px solid #ddd;border-radius:8px;margin-bottom:16px;padding:8px}", f"<main>{inner}</main>")


def log():
    lines = "".join(f"<div class={'o' if i % 2 else 'e'}>12:{i // 60:02}:{i % 60:02} INFO  server: request served in {i * 7 % 4 + 1} ms</div>" for i in range(230))
    return page("main{font:13px/19px monospace}.o{background:#f4f4f4}div{padding:0 12px}", f"<main>{lines}</main>")


def tab_in_the_middle():
    """It hides the ends of lines."""
    return page("#f{position:fixed;right:60px;top:42%;width:90px;padding:14px 8px;background:#fff3d0;border:1px solid #b93;border-radius:6px;"
                "box-shadow:0 2px 10px #0004}main{padding:20px 40px}",
                f"<main>{article(22, 21)}</main><div id=f>Tell us what you think</div>")


# name: (page, first column, end column, what the survey has to know)
OTHERS = {
    "dark contents": (dark_docs(), 212, 830, {}),
    "shrinking header": (shrinking_header(), 10, 1040, {"from": 120}),
    "hiding header": (hiding_header(), 10, 1040, {}),
    "cookie banner": (cookie_banner(), 10, 1040, {}),
    "frosted header": (frosted_header(), 10, 1040, {}),
    "reading progress": (reading_progress(), 10, 1040, {}),
    "snapping cards": (snapping_cards(), 10, 1040, {}),
    "sliding rows": (sliding_rows(), 10, 1040, {}),
    "sheet": (sheet(), 50, 1000, {}),
    "recycled rows": (recycled_rows(), 10, 1040, {}),
    "frame in page": (frame_in_page(), 190, 1040, {}),
    "pane in a shell": (pane_in_a_shell(), 290, 1040, {}),
    "film and player": (film_and_player(), 605, 745, {}),
    "parallax": (parallax(), 170, 900, {"from": 340}),
    "tab in the middle": (tab_in_the_middle(), 10, 880, {}),
    "fixed gradient": (fixed_gradient(), 95, 980, {}),
    "side bar sticks": (sidebar_that_sticks(), 10, 700, {}),
    "ticker": (ticker(), 10, 1040, {"from": 34}),
    "endless": (endless(), 10, 1040, {"frames": 20}),
    "cards": (cards(), 10, 1040, {}),
    "log": (log(), 5, 1040, {}),
    "cut in a column": (page("main{padding:20px 40px}", f"<main>{article(22, 17)}</main>"), 5, 300, {"cut": (300, 130, 400, 90)}),
    "twice as dense": (page(DARK + "nav{position:fixed;left:0;top:0;bottom:0;width:120px;padding:10px;background:#0b0c0e}main{margin-left:120px;padding:12px 20px}",
                            f"<nav>{links(9, 19)}</nav><main>{article(12, 18)}</main>"), 250, 1040, {"scale": 2}),
}
