"""What is found out about a bar."""


class Findings:
    """`facts` by what they are of, and `faults`."""

    def __init__(self):
        self.facts = {}
        self.faults = []

    def expect(self, holds, fault):
        if not holds:
            self.faults.append(fault)
        return bool(holds)
