"""What the made-up shops sell, and how they talk about it."""

# theme: (phrases that people search for, words that go with them)
THEMES = {
    "footwear": (("blue shoes", "running shoes", "leather boots", "men's boots"),
                 "sole lace heel suede canvas trainer sandal insole toe walking waterproof slip-on".split()),
    "garden": (("garden chairs", "garden tools", "patio furniture", "rose bushes"),
               "lawn spade hedge teak bench parasol seedling compost border trellis mower greenhouse".split()),
    "travel": (("cheap flights", "last minute holidays", "city breaks", "hotels in Lisbon"),
               "airport luggage departure island fare boarding resort passport terrace transfer coach".split()),
    "kitchen": (("kitchen knives", "coffee grinder", "cast iron pan", "salt & pepper mills"),
                "oven whisk blade saucepan steel handle roast simmer apron ladle chopping stove".split()),
    "bikes": (("mountain bikes", "bicycle repair", "electric bikes", "cycling helmets"),
              "pedal gear saddle brake chain frame spoke tyre commuter battery trail handlebar".split()),
    "books": (("used books", "children's books", "travel guides", "old maps"),
              "novel paperback chapter author shelf binding atlas edition print story poem library".split()),
    "music": (("acoustic guitar", "piano lessons", "vinyl records", "drum kit"),
              "string chord tuning melody turntable rehearsal amplifier tempo scale pedal studio bow".split()),
    "pets": (("dog food", "cat toys", "aquarium fish", "bird cages"),
             "puppy kitten collar leash feather biscuit filter tank grooming kennel paw vet".split()),
    "home": (("wooden tables", "table lamps", "wool blankets", "curtain rails"),
             "oak pine shade cushion sofa linen drawer mirror carpet varnish bulb cupboard".split()),
    "tech": (("laptop repair", "wireless headphones", "phone cases", "data recovery"),
             "screen charger keyboard battery cable memory backup warranty speaker adapter router".split()),
    "food": (("organic honey", "green tea", "farm cheese", "wedding cakes"),
             "harvest leaf orchard butter vanilla jar cream almond bakery dairy blossom recipe".split()),
    "sport": (("tennis rackets", "yoga mats", "football shirts", "climbing ropes"),
              "grip string stretch goal harness training fitness league coach court stadium bounce".split()),
    "cars": (("car insurance", "winter tyres", "used cars", "roof boxes"),
             "engine mileage claim policy axle garage snow motorway driver licence boot premium".split()),
    "art": (("oil paints", "picture frames", "pottery classes", "life drawing"),
            "canvas brush glaze kiln palette gallery easel sketch pigment studio charcoal clay".split()),
    "baby": (("baby clothes", "wooden toys", "push chairs", "nursery furniture"),
             "cot bib rattle cotton sleeve puzzle stroller blanket newborn teddy crib doll".split()),
    "office": (("office chairs", "standing desks", "printer ink", "fountain pens"),
               "paper folder stapler drawer nib toner ergonomic monitor notebook envelope filing".split()),
    "health": (("reading glasses", "herbal remedies", "back pain relief", "vitamin tablets"),
               "lens pharmacy ginger posture capsule massage optician zinc lotion clinic muscle".split()),
    "fashion": (("summer dresses", "silk scarves", "blue jeans", "raincoats"),
                "collar button hem pocket velvet pattern denim zip fitting tailor sleeve wardrobe".split()),
}

FILLERS = ("delivery price order stock customer shop week range quality service colour size choice season offer "
           "family team store return gift morning town street guarantee").split()

# {p} {P}: a phrase, {o}: one of another theme, {w} {W} {v}: words of the theme, {f} {g}: fillers
SENTENCES = (
    "Our {p} are chosen by people who use them every day.",
    "If you are looking for {p}, start with the {w} and then think about the {v}.",
    "A good {w} matters more than the {f} of it.",
    "We keep {p} in {f} all year, and the {w} comes from a workshop near the {g}.",
    "Ask us about the {w}, the {v} or anything else in the {f}.",
    "Many customers who bought {p} also needed a {w}.",
    "The {w} was new to us until a {f} ago.",
    "{P} of this {f} last for years when the {w} is cared for.",
    "Read how we test every {w} before it leaves the {f}.",
    "There is a {f} on the {w} and the {v} until the end of the month.",
    "Nothing beats a {w} with the right {v}.",
    "The {f} and the {g} are part of what we offer.",
    "This page was written by our {f} team after a long {g}.",
    "Compare {p} side by side, from the plain {w} to the finest {v}.",
    "Some people ask whether {o} go together with {p}; we think they do.",
    "You will not find {o} here, but our neighbours in the {f} have them.",
    "Free {f} on every {g} above thirty.",
    "Every {w} in the {f} has been seen by two pairs of eyes.",
)

TITLES = (
    "{P}", "{P} - {shop}", "{shop}: {p}", "Buy {p} | {shop}", "The {w} and the {v}", "{P} & {w} guide",
    "How to choose {p}", "{W} news", "New {p} this {f}", "{shop} \N{RIGHT-POINTING DOUBLE ANGLE QUOTATION MARK} {W}",
    "Ten things about {p}", '"{W}" explained',
)

FIRST_NAMES = ("Alder Bramble Calder Dunmore Elmfield Fenwick Garnet Hollis Ivory Juniper Kestrel Larch Marlow "
               "Norbury Orchard Pemberton Quarry Rowan Sable Tamarind Umber Vesper Willow Yarrow Zephyr Anvil "
               "Beacon Copper Dapple Ember Foxglove Granite Heron Indigo Jasper Kelp Linden Mallow Nettle Osprey "
               "Pewter Quill Russet Sorrel Thistle Upland Velour Wren").split()
LAST_NAMES = ("and Sons", "House", "Depot", "Corner", "Market", "Trading", "Works", "Brothers", "Direct", "Store",
              "Outlet", "Supplies", "Boutique", "Emporium", "Warehouse", "Caf\N{LATIN SMALL LETTER E WITH ACUTE}")
HOST_FORMS = ("www.{}.example", "www.{}.example", "www.{}.example", "{}.example", "shop.{}.example")
FOLDERS = ("", "", "products/", "products/{w}/", "guides/", "news/2024/", "news/2025/", "shop/")
