"""What `kovra list` and `kovra vocabulary` tell as JSON, in the order in which a reader wants it."""

import collections


class Words:
    """A set of words with their codes, and the members that have it."""

    def __init__(self, pairs, anchor):
        self.pairs = pairs
        self.anchor = anchor
        self.members = []

    def by_code(self):
        """Codes in ascending order, each with its words in the order of the vocabulary."""
        codes = collections.defaultdict(list)
        for code, name in self.pairs:
            codes[code].append(name)
        return sorted(codes.items())


class Member:
    def __init__(self, told, path, elements, words):
        self.path = path
        self.elements = elements
        self.words = words
        self.kind = told["kind"]
        self.form = told.get("form", "")
        self.most_bytes = told.get("most_bytes", 0)
        self.secret = told["secret"]
        self.title = told.get("title", "")


class Message:
    def __init__(self, told):
        self.name = told["name"]
        self.title = told["title"]
        self.roots = told["roots"]
        self.read = told["read"]
        self.written = told["written"]
        self.command = told.get("command", "")
        self.required = told.get("required", [])
        self.choices = told.get("choices", [])
        self.members = []


def within(outer, inner):
    """Paths of elements below those around them; a member without elements is told by those."""
    if not outer or not inner:
        return inner or outer
    return [f"{around}/{element}" for around in outer for element in inner]


class Catalogue:
    def __init__(self, messages, findings, vocabulary):
        self.findings = findings
        self.messages = []
        self._words = {}
        self._uses = collections.defaultdict(list)
        for told in messages:
            message = Message(told)
            self.messages.append(message)
            for root in message.roots:
                self._use(root, message.name)
            self._add(message, told["members"], "", [])
        self.unbound = [name for name in vocabulary if name not in self._uses]

    @property
    def vocabularies(self):
        return list(self._words.values())

    def index(self):
        """Every element and word, and the messages that have it."""
        return sorted(self._uses.items())

    def _use(self, name, message):
        if message not in self._uses[name]:
            self._uses[name].append(message)

    def _add(self, message, members, before, around):
        for told in members:
            path = before + told["name"] + ("[]" if told["kind"] == "list" else "")
            elements = within(around, told["elements"])
            words = self._words_of(message.name, path, told.get("words"))
            message.members.append(Member(told, path, elements, words))
            for name in "/".join(told["elements"]).split("/"):
                if name:
                    self._use(name, message.name)
            for word in told.get("words", []):
                self._use(word["name"], message.name)
            self._add(message, told.get("members", []), path + ".", elements)

    def _words_of(self, message, path, told):
        if not told:
            return None
        pairs = tuple((word["code"], word["name"]) for word in told)
        place = f"{message}.{path}"
        anchor = "words-of-" + place.replace("[]", "").replace(".", "-").replace("_", "-").lower()
        words = self._words.setdefault(pairs, Words(pairs, anchor))
        words.members.append(place)
        return words
