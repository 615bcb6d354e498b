thing other plain
