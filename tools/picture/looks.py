"""The looks in which tools/pictures shows the program: what a desktop, or its user, has set."""

from dataclasses import dataclass, field

# Of Plasma's own colour schemes: window, its text, field, its text, button, its text, selection.
COLOURS = {
    "BreezeDark": (
        "42,46,50",
        "252,252,252",
        "27,30,32",
        "252,252,252",
        "49,54,59",
        "252,252,252",
        "61,174,233",
    ),
    "BreezeHighContrast": (
        "0,0,0",
        "255,255,255",
        "0,0,0",
        "255,255,255",
        "0,0,0",
        "255,255,255",
        "0,49,110",
    ),
    "WhiteHighContrast": ("255,255,255", "0,0,0", "255,255,255", "0,0,0", "255,255,255", "0,0,0", "0,0,160"),
}
PLASMA = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"}

USUAL = (
    "Lena O'Keefe",
    "Amara Osei",
    "Tobias Hargreave",
    "Maximiliane Featherstonehaugh-Cholmondeley",
    "Zoë Abel",
)
FIVE_SCRIPTS = (
    "Đặng Thị Nguyễn-Świątkowska-Þórðardóttir",
    "Александра Константиновна Преображенская-Воскресенская",
    "عبد الرحمن بن محمد آل الشيخ العبد اللطيف",
    "欧阳司徒诸葛 慕容上官皇甫令狐端木百里",
    "लक्ष्मीनारायण वेंकटरामन कृष्णमूर्ति सुब्रह्मण्यम",
    "דנה כהן",
)


@dataclass
class Look:
    environment: dict = field(default_factory=dict)  # the program's
    session: tuple = ("session",)
    dots_per_inch: int = 96  # Xft.dpi, by which desktops make everything larger
    font_size: int = 0  # in points, of Plasma; 0: as it is
    colours: str = ""  # the name of a colour scheme of Plasma
    wants_dark: bool = False  # by the desktop portal
    people: tuple = USUAL
    has_two_screens: bool = False  # LEFT and RIGHT, each half as wide as the session's

    def plasma_settings(self):
        """The contents of kdeglobals."""
        lines = []
        if self.font_size:
            lines += ["[General]", f"font=DejaVu Sans,{self.font_size},-1,5,50,0,0,0,0,0"]
            lines += [f"menuFont=DejaVu Sans,{self.font_size},-1,5,50,0,0,0,0,0"]
        if self.colours:
            window, text, field_, typed, button, on_button, selection = COLOURS[self.colours]
            for group, ground, ink in (
                ("Window", window, text),
                ("View", field_, typed),
                ("Button", button, on_button),
                ("Tooltip", window, text),
                ("Selection", selection, "255,255,255"),
            ):
                lines += [f"[Colors:{group}]", f"BackgroundNormal={ground}", f"ForegroundNormal={ink}"]
        return "\n".join(lines) + "\n"


LARGE = ("session", "--size", "2560x1600")
LOOKS = {
    "light": Look(),
    "dark": Look(wants_dark=True),
    "dark-plasma": Look(PLASMA, colours="BreezeDark"),
    "scale-1.25": Look({"QT_SCALE_FACTOR": "1.25"}),
    "scale-1.5": Look({"QT_SCALE_FACTOR": "1.5"}),
    "scale-2": Look(session=(*LARGE, "--scale", "2"), dots_per_inch=192),
    "resolution-120": Look(dots_per_inch=120),
    "resolution-144": Look(dots_per_inch=144),
    "text-150": Look(PLASMA, font_size=15),
    "text-200": Look(PLASMA, font_size=20),
    "resolution-192": Look(dots_per_inch=192),
    "text-200-small-screen": Look(PLASMA, session=("session", "--size", "1366x768"), font_size=20),
    "high-contrast-black": Look(PLASMA, colours="BreezeHighContrast"),
    "high-contrast-white": Look(PLASMA, colours="WhiteHighContrast"),
    "right-to-left": Look(
        {"LANG": "he_IL.UTF-8", "LANGUAGE": "he"}, people=FIVE_SCRIPTS[5:] + FIVE_SCRIPTS[2:3] + USUAL[:2]
    ),
    "five-scripts": Look(people=FIVE_SCRIPTS),
    "two-screens": Look(
        {"QT_SCREEN_SCALE_FACTORS": "LEFT=1;RIGHT=2"},
        ("session", "--size", "2560x1200"),
        has_two_screens=True,
    ),
    "no-password-store": Look(session=("session", "--keyring", "none", "--tray", "none")),
}
