/* declares fewer000 to fewer198 */
