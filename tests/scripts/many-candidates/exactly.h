/* declares exactly000 to exactly199 */
