"""Writes the bill of materials of a tarball as SPDX: what is linked, what it is built and tested with.

    bill.py PACKAGES TARBALL >BILL

PACKAGES is the list of the Debian packages that the scripts install; their versions are those that are
installed here. Nothing else goes in, so the same tree on the same system has the same bill.
"""

import hashlib
import json
import os
import re
import subprocess
import sys
import uuid
from datetime import datetime, timezone
from pathlib import Path
from typing import Any

# What becomes a part of the library or of the tool, and how.
LINKED = {
    "libtinyxml-dev": "DYNAMIC_LINK",
    "libexpat1-dev": "DYNAMIC_LINK",
    "libstdc++6": "DYNAMIC_LINK",
    "libgcc-s1": "DYNAMIC_LINK",
    "libc6": "DYNAMIC_LINK",
    "libcli11-dev": "STATIC_LINK",
    "nlohmann-json3-dev": "STATIC_LINK",
}
RUNTIMES = ("libc6", "libgcc-s1", "libstdc++6")
# How else a use of a package relates to Kovra.
USES = {"build": "BUILD_DEPENDENCY_OF", "check": "TEST_DEPENDENCY_OF"}
KOVRA = "SPDXRef-Kovra"
FORMAT = "${Version}\\t${Architecture}\\t${source:Package}\\t${Homepage}"


def rows(listing: Path) -> list[tuple[str, str]]:
    """Each package and its use; the compiler brings its runtimes."""
    lines = (line.split() for line in listing.read_text().splitlines() if not line.startswith("#"))
    listed = [(line[0], line[1]) for line in lines if line and line[1] in USES]
    return listed + [(runtime, "build") for runtime in RUNTIMES]


def reference(package: str) -> str:
    return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.-]", "-", package.replace("+", "p"))


def described(package: str) -> dict[str, Any]:
    """What dpkg knows of an installed package."""
    query = ["dpkg-query", "--show", "--showformat", FORMAT, package]
    facts = subprocess.run(query, check=True, capture_output=True, text=True).stdout
    version, architecture, source, homepage = facts.split("\t")
    return {
        "SPDXID": reference(package),
        "name": package,
        "versionInfo": version,
        "supplier": "Organization: Debian",
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "homepage": homepage or "NOASSERTION",
        "sourceInfo": f"built from the source package {source}",
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": "NOASSERTION",
        "copyrightText": "NOASSERTION",
        "externalRefs": [
            {
                "referenceCategory": "PACKAGE-MANAGER",
                "referenceType": "purl",
                "referenceLocator": f"pkg:deb/debian/{package.replace('+', '%2B')}"
                f"@{version.replace('+', '%2B').replace(':', '%3A')}?arch={architecture}",
            }
        ],
    }


def kovra(tarball: Path, digest: str) -> dict[str, Any]:
    return {
        "SPDXID": KOVRA,
        "name": "kovra",
        "versionInfo": tarball.name.removeprefix("kovra-").removesuffix(".tar.xz"),
        "packageFileName": tarball.name,
        "supplier": "Organization: The Kovra developers",
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "checksums": [{"algorithm": "SHA256", "checksumValue": digest}],
        "licenseConcluded": "MIT",
        "licenseDeclared": "MIT",
        "copyrightText": "2026 The Kovra developers",
    }


def relation(package: str, use: str) -> dict[str, str]:
    if package in LINKED:
        ends = (KOVRA, LINKED[package], reference(package))
    else:
        ends = (reference(package), USES[use], KOVRA)
    return dict(zip(("spdxElementId", "relationshipType", "relatedSpdxElement"), ends))


def bill(listing: Path, tarball: Path) -> dict[str, Any]:
    digest = hashlib.sha256(tarball.read_bytes()).hexdigest()
    moment = datetime.fromtimestamp(int(os.environ["SOURCE_DATE_EPOCH"]), timezone.utc)
    packages = sorted(rows(listing))
    unknown = LINKED.keys() - {package for package, _ in packages}
    if unknown:
        raise SystemExit(f"{listing} lacks what is linked: {', '.join(sorted(unknown))}")
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": tarball.name,
        "documentNamespace": f"urn:uuid:{uuid.uuid5(uuid.NAMESPACE_OID, digest)}",
        "creationInfo": {
            "created": moment.strftime("%Y-%m-%dT%H:%M:%SZ"),
            "creators": ["Organization: The Kovra developers"],
        },
        "documentDescribes": [KOVRA],
        "packages": [kovra(tarball, digest), *(described(package) for package, _ in packages)],
        "relationships": [relation(package, use) for package, use in packages],
    }


if __name__ == "__main__":
    json.dump(bill(Path(sys.argv[1]), Path(sys.argv[2])), sys.stdout, indent=1)
    print()
