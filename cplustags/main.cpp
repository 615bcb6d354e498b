// cplustags: makes tags files that symbol lookup reads.

int main()
{
    return 1; // nothing is made yet
}
