"""How good answers are."""


class Score:
    """Counts of how good the answers of one reader are."""

    def __init__(self):
        self.places = self.first = self.three = self.anywhere = self.nothing = self.answers = 0

    def add(self, answers, right):
        ranks = [rank for rank, answer in enumerate(answers) if answer in right]
        self.places += 1
        self.first += ranks[:1] == [0]
        self.three += bool(ranks) and ranks[0] < 3
        self.anywhere += bool(ranks)
        self.nothing += not answers
        self.answers += len(answers)

    def percent(self, count):
        return 100 * count / self.places if self.places else 0

    def figures(self):
        return {"places": self.places, **{what: round(self.percent(getattr(self, what)), 1)
                                          for what in ("first", "three", "anywhere", "nothing")},
                "answers": round(self.answers / max(1, self.places), 1)}
