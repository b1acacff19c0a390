"""What the package says of its version is what the build says."""
import re
import sys
import unittest
from pathlib import Path


class Versions(unittest.TestCase):
    root = Path()
    version = ""

    def first(self, file, pattern):
        found = re.search(pattern, (self.root / "package" / file).read_text(encoding="utf-8"), re.MULTILINE)
        return found and found[1]

    def test_are_those_of_the_build(self):
        said = {
            "changelog": self.first("changelog", r"^marovia-sondrel \(([0-9.]+)-\d+\)"),
            "metainfo": self.first("example.kestrune.marovia_sondrel.metainfo.xml", r'<release version="([^"]+)"'),
            "man page": self.first("marovia-sondrel.1", r'^\.TH .*"Marovia Sondrel ([0-9.]+)"'),
        }
        self.assertEqual(said, dict.fromkeys(said, self.version))


if __name__ == "__main__":
    Versions.version = sys.argv.pop(2)
    Versions.root = Path(sys.argv.pop(1))
    unittest.main()
